#include "Support/platform/NamedEvent.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "Support/platform/Errors.h"
#include "Support/platform/posix/Errno.h"

// The event is a file in shared memory; it is set when the file is not empty. A living creator
// holds a shared lock on it, which ends with the creator. A file without a lock is a dead
// creator's: the next creator puts a new file in its place, so that whoever still has the old one
// open sets what nobody watches.
namespace vemra::platform {
namespace {

constexpr char kFolder[] = "/dev/shm";
constexpr std::size_t kMaxName = 240;  // bytes

// The host path of an event's file; empty for a name that cannot be one.
std::string PathOf(const std::string& name) {
  if (name.empty() || name.size() > kMaxName) return {};
  std::string path = std::string(kFolder) + "/vemra-";
  for (const char c : name) {
    if (c == '\\' || c == '\0') return {};
    // As on Windows, a slash is a character like others.
    path += c == '/' ? "%2F" : c == '%' ? "%25" : std::string(1, c);
  }
  return path;
}

struct flock WholeFile(short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  return lock;
}

bool Lock(int descriptor, short type) {
  struct flock lock = WholeFile(type);
  return ::fcntl(descriptor, F_OFD_SETLK, &lock) == 0;
}

bool HasCreator(int descriptor) {
  struct flock lock = WholeFile(F_WRLCK);
  return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool IsNamed(int descriptor, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

// A new file that is locked before it gets its name. -1 with EEXIST when the name is taken.
int PublishNew(const std::string& path) {
  const int descriptor = ::open(kFolder, O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor < 0) return -1;
  const std::string unnamed = "/proc/self/fd/" + std::to_string(descriptor);
  if (Lock(descriptor, F_RDLCK) &&
      ::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0) {
    return descriptor;
  }
  const int reason = errno;
  ::close(descriptor);
  errno = reason;
  return -1;
}

// The file of a living creator, now this one's too. A dead one's file is taken away. -1 when there
// is none, or with another errno than ENOENT when it is not ours to use.
int JoinExisting(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) return -1;
  const bool isDead = Lock(descriptor, F_WRLCK);
  // Only who holds this lock takes the name away, so it cannot come to name another file meanwhile.
  if (isDead && IsNamed(descriptor, path)) ::unlink(path.c_str());
  if (!isDead && Lock(descriptor, F_RDLCK) && IsNamed(descriptor, path)) return descriptor;
  ::close(descriptor);
  errno = ENOENT;
  return -1;
}

}  // namespace

bool NamedEvent::Create(const std::string& name) {
  Close();
  path_ = PathOf(name);
  if (path_.empty()) return Fail(kInvalidName);
  while (handle_ == kNone) {
    handle_ = PublishNew(path_);
    if (handle_ == kNone && errno == EEXIST) {
      handle_ = JoinExisting(path_);
      if (handle_ == kNone && errno == ENOENT) continue;
    }
    if (handle_ == kNone) return FailWithErrno();
  }
  created_ = true;
  return true;
}

bool NamedEvent::Open(const std::string& name) {
  Close();
  const std::string path = PathOf(name);
  if (path.empty()) return Fail(kInvalidName);
  handle_ = ::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
  if (handle_ == kNone) return FailWithErrno();
  if (HasCreator(static_cast<int>(handle_))) return true;
  Close();
  return Fail(kFileNotFound);
}

void NamedEvent::Close() {
  if (handle_ == kNone) return;
  const auto descriptor = static_cast<int>(handle_);
  const bool isLast = created_ && Lock(descriptor, F_WRLCK);
  if (isLast && IsNamed(descriptor, path_)) ::unlink(path_.c_str());
  ::close(descriptor);
  handle_ = kNone;
  created_ = false;
}

bool NamedEvent::Set() {
  return ::pwrite(static_cast<int>(handle_), "1", 1, 0) == 1 || FailWithErrno();
}

bool NamedEvent::IsSet() const {
  struct stat status {};
  return created_ && ::fstat(static_cast<int>(handle_), &status) == 0 && status.st_size > 0;
}

}  // namespace vemra::platform
