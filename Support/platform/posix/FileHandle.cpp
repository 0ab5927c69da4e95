#include "Support/platform/FileHandle.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "Support/platform/Errors.h"
#include "Support/platform/Paths.h"
#include "Support/platform/posix/Errno.h"
#include "Support/platform/posix/ShareLock.h"

namespace vemra::platform {
namespace {

using Access = TavoFile::Access;
using Creation = TavoFile::Creation;
using Share = TavoFile::Share;

int OpenFlags(Access access, Creation creation, Share share) {
  int flags = O_CLOEXEC;
  if (creation != Creation::kOpenExisting) flags |= O_CREAT;
  if (access == Access::kWrite) return flags | O_WRONLY;
  // Truncating, and refusing others to read (see ShareLock), need a writable descriptor.
  const bool writes = access == Access::kReadWrite || creation == Creation::kCreateTruncate ||
                      share == Share::kDenyRead || share == Share::kDenyReadWrite;
  return flags | (writes ? O_RDWR : O_RDONLY);
}

// Whether path no longer names the open file, because another one has been put in its place.
bool IsReplaced(const struct stat& opened, const std::string& path) {
  struct stat named {};
  return ::stat(path.c_str(), &named) != 0 || named.st_ino != opened.st_ino ||
         named.st_dev != opened.st_dev;
}

bool Prepare(int descriptor, const struct stat& opened, Access access, Creation creation,
             Share share) {
  if (S_ISDIR(opened.st_mode)) return Fail(kAccessDenied);
  if (!ClaimShare(descriptor, access, share)) return false;
  // Only now that the others have agreed.
  const bool truncates = creation == Creation::kCreateTruncate && S_ISREG(opened.st_mode);
  return !truncates || ::ftruncate(descriptor, 0) == 0 || FailWithErrno();
}

// read and write take at most this much at once.
constexpr std::size_t kMaxTransfer = 0x7FFFF000;

}  // namespace

bool FileHandle::Open(const std::string& path, Access access, Creation creation, Share share) {
  Close();
  const std::string host = ToHostPath(path);
  if (host.empty()) return false;
  for (;;) {
    const int descriptor = ::open(host.c_str(), OpenFlags(access, creation, share), 0666);
    if (descriptor < 0) return FailWithErrno(host);
    handle_ = descriptor;
    struct stat opened {};
    if (::fstat(descriptor, &opened) != 0) {
      FailWithErrno();
      Close();
      return false;
    }
    if (!Prepare(descriptor, opened, access, creation, share)) {
      Close();
      return false;
    }
    // A claim on a file that was replaced before it was made would exclude nobody.
    if (share == Share::kAll || !IsReplaced(opened, host)) return true;
    Close();
  }
}

void FileHandle::Close() {
  if (handle_ != kNone) ::close(static_cast<int>(handle_));
  handle_ = kNone;
}

bool FileHandle::Read(void* buffer, std::size_t size, std::size_t* read) {
  *read = 0;
  while (*read < size) {
    const ssize_t n = ::read(static_cast<int>(handle_), static_cast<char*>(buffer) + *read,
                             std::min(size - *read, kMaxTransfer));
    if (n == 0) break;
    if (n > 0) {
      *read += static_cast<std::size_t>(n);
    } else if (errno != EINTR) {
      return FailWithErrno();
    }
  }
  return true;
}

bool FileHandle::Write(const void* data, std::size_t size) {
  const char* from = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t n = ::write(static_cast<int>(handle_), from, std::min(size, kMaxTransfer));
    if (n > 0) {
      from += n;
      size -= static_cast<std::size_t>(n);
    } else if (n < 0 && errno != EINTR) {
      return FailWithErrno();
    }
  }
  return true;
}

bool FileHandle::Seek(std::int64_t offset, TavoFile::Origin origin, std::int64_t* position) {
  constexpr int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  const off_t result =
      ::lseek(static_cast<int>(handle_), offset, kOrigins[static_cast<int>(origin)]);
  if (result < 0) return FailWithErrno();
  *position = result;
  return true;
}

bool FileHandle::GetLength(std::int64_t* length) {
  struct stat status {};
  if (::fstat(static_cast<int>(handle_), &status) != 0) return FailWithErrno();
  *length = status.st_size;
  return true;
}

bool FileHandle::SetLength(std::int64_t length) {
  return ::ftruncate(static_cast<int>(handle_), length) == 0 || FailWithErrno();
}

bool FileHandle::Sync() {
  return ::fsync(static_cast<int>(handle_)) == 0 || FailWithErrno();
}

std::FILE* FileHandle::OpenStream(const char* mode) {
  const int descriptor = ::fcntl(static_cast<int>(handle_), F_DUPFD_CLOEXEC, 0);
  if (descriptor < 0) {
    FailWithErrno();
    return nullptr;
  }
  std::FILE* const stream = ::fdopen(descriptor, mode);
  if (stream == nullptr) {
    FailWithErrno();
    ::close(descriptor);
  }
  return stream;
}

}  // namespace vemra::platform
