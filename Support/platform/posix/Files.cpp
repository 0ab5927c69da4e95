#include "Support/platform/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

#include "Support/platform/Errors.h"
#include "Support/platform/FileHandle.h"
#include "Support/platform/Paths.h"
#include "Support/platform/posix/Errno.h"
#include "Support/platform/posix/ShareLock.h"

namespace vemra::platform {
namespace {

bool GetStatus(const std::string& path, struct stat* status) {
  const std::string host = ToHostPath(path);
  if (host.empty()) return false;
  return ::stat(host.c_str(), status) == 0 || FailWithErrno(host);
}

bool IsOpenElsewhere(const std::string& host) {
  const int descriptor = ::open(host.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool held = IsShareClaimed(descriptor);
  ::close(descriptor);
  return held;
}

bool CopyBytes(FileHandle& from, FileHandle& to) {
  constexpr std::size_t kBlock = 256 * 1024;
  const auto block = std::make_unique_for_overwrite<char[]>(kBlock);
  std::size_t size = 0;
  do {
    if (!from.Read(block.get(), kBlock, &size) || !to.Write(block.get(), size)) return false;
  } while (size == kBlock);
  return true;
}

bool CopyModificationTime(const std::string& from, const std::string& to) {
  struct stat status {};
  if (!GetStatus(from, &status)) return false;
  const timespec times[] = {status.st_atim, status.st_mtim};
  return ::utimensat(AT_FDCWD, ToHostPath(to).c_str(), times, 0) == 0 || FailWithErrno();
}

}  // namespace

const char kLineEnd[] = "\n";

bool FileExists(const std::string& path) {
  struct stat status {};
  return GetStatus(path, &status) && !S_ISDIR(status.st_mode);
}

bool FolderExists(const std::string& path) {
  struct stat status {};
  return GetStatus(path, &status) && S_ISDIR(status.st_mode);
}

bool GetFileStamp(const std::string& path, FileStamp* stamp) {
  struct stat status {};
  if (!GetStatus(path, &status)) return false;
  stamp->identity = {status.st_dev, status.st_ino};
  stamp->size = status.st_size;
  stamp->modified = status.st_mtim.tv_sec * std::int64_t{1000000000} + status.st_mtim.tv_nsec;
  return true;
}

bool MakeFolder(const std::string& path) {
  const std::string host = ToHostPath(path);
  if (host.empty()) return false;
  return ::mkdir(host.c_str(), 0777) == 0 || FailWithErrno(host);
}

bool RemoveFolder(const std::string& path) {
  const std::string host = ToHostPath(path);
  if (host.empty()) return false;
  return ::rmdir(host.c_str()) == 0 || FailWithErrno(host);
}

bool RemoveFile(const std::string& path) {
  const std::string host = ToHostPath(path);
  if (host.empty()) return false;
  if (IsOpenElsewhere(host)) return Fail(kSharingViolation);
  return ::unlink(host.c_str()) == 0 || FailWithErrno(host);
}

bool CopyFileOver(const std::string& from, const std::string& to) {
  FileHandle source;
  FileHandle target;
  if (!source.Open(from, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting,
                   TavoFile::Share::kAll) ||
      !target.Open(to, TavoFile::Access::kWrite, TavoFile::Creation::kCreateTruncate,
                   TavoFile::Share::kDenyReadWrite)) {
    return false;
  }
  if (CopyBytes(source, target) && CopyModificationTime(from, to)) return true;
  const std::uint32_t reason = GetLastErrorCode();
  target.Close();
  RemoveFile(to);
  return Fail(reason);
}

}  // namespace vemra::platform
