#include "Support/platform/posix/ShareLock.h"

#include <fcntl.h>

#include <atomic>
#include <cerrno>
#include <random>

#include "Support/platform/Errors.h"
#include "Support/platform/posix/Errno.h"

namespace vemra::platform {
namespace {

// Two ranges of bytes far beyond any file's end stand for writing and for reading. Doing a thing
// must conflict with refusing it, but neither with itself. So one of the two locks the whole range
// shared and the other one random byte of it exclusively; who does both locks the whole range
// exclusively. An exclusive lock needs a descriptor open for writing, which is why writers, and
// those who refuse reading, are the ones to take it. Each claim is a single system call, so of two
// openers that exclude each other one always succeeds.
constexpr off_t kWriteRange = off_t{1} << 62;
constexpr off_t kReadRange = kWriteRange + (off_t{1} << 31);
constexpr off_t kRangeSize = off_t{1} << 30;

struct flock MakeLock(short type, off_t start, off_t length) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = start;
  lock.l_len = length;
  return lock;
}

bool Lock(int descriptor, short type, off_t start, off_t length) {
  struct flock lock = MakeLock(type, start, length);
  return ::fcntl(descriptor, F_OFD_SETLK, &lock) == 0;
}

off_t RandomByte() {
  static std::atomic<std::uint32_t> next = std::random_device()();
  constexpr std::uint32_t kOddStep = 0x9E3779B1;  // spreads the bytes of one process
  return static_cast<off_t>(next.fetch_add(kOddStep) % static_cast<std::uint32_t>(kRangeSize));
}

bool Claim(int descriptor, off_t range, bool oneByte, bool wholeRange) {
  if (wholeRange) return Lock(descriptor, oneByte ? F_WRLCK : F_RDLCK, range, kRangeSize);
  if (!oneByte) return true;
  // The second attempt is for the rare opener that has drawn the same byte.
  return Lock(descriptor, F_WRLCK, range + RandomByte(), 1) ||
         Lock(descriptor, F_WRLCK, range + RandomByte(), 1);
}

}  // namespace

bool ClaimShare(int descriptor, TavoFile::Access access, TavoFile::Share share) {
  const bool reads = access != TavoFile::Access::kWrite;
  const bool writes = access != TavoFile::Access::kRead;
  const bool deniesRead =
      share == TavoFile::Share::kDenyRead || share == TavoFile::Share::kDenyReadWrite;
  const bool deniesWrite =
      share == TavoFile::Share::kDenyWrite || share == TavoFile::Share::kDenyReadWrite;
  if (Claim(descriptor, kWriteRange, writes, deniesWrite) &&
      Claim(descriptor, kReadRange, deniesRead, reads)) {
    return true;
  }
  if (errno == EAGAIN || errno == EACCES) return Fail(kSharingViolation);
  // A file system without locks still serves those who refuse nothing.
  return share == TavoFile::Share::kAll || FailWithErrno();
}

bool IsShareClaimed(int descriptor) {
  struct flock lock = MakeLock(F_WRLCK, kWriteRange, kReadRange + kRangeSize - kWriteRange);
  return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace vemra::platform
