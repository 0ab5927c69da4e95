#include "Support/platform/FolderListing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "Support/platform/Errors.h"
#include "Support/platform/Paths.h"
#include "Support/platform/posix/Errno.h"

namespace vemra::platform {
namespace {

DIR* AsListing(std::intptr_t handle) {
  return reinterpret_cast<DIR*>(handle);  // NOLINT(performance-no-int-to-ptr): came from one
}

bool IsDotName(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

bool IsSayable(const char* name) {
  return std::strpbrk(name, "\\:") == nullptr;
}

bool LeadsToFolder(DIR* listing, const char* name) {
  struct stat status {};
  return ::fstatat(::dirfd(listing), name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

bool IsSymbolicLink(DIR* listing, const char* name) {
  struct stat status {};
  return ::fstatat(::dirfd(listing), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISLNK(status.st_mode);
}

}  // namespace

bool FolderListing::Open(const std::string& path) {
  Close();
  const std::string host = ToHostPath(path + "\\");
  if (host.empty()) return false;
  DIR* const listing = ::opendir(host.c_str());
  if (listing == nullptr) {
    if (errno == ENOENT) return Fail(kPathNotFound);
    return errno == ENOTDIR ? Fail(kNotAFolder) : FailWithErrno();
  }
  handle_ = reinterpret_cast<std::intptr_t>(listing);
  struct stat status {};
  if (::fstat(::dirfd(listing), &status) != 0) {
    FailWithErrno();
    Close();
    return false;
  }
  identity_ = {status.st_dev, status.st_ino};
  return true;
}

void FolderListing::Close() {
  if (handle_ != 0) ::closedir(AsListing(handle_));
  handle_ = 0;
}

bool FolderListing::Next(FolderEntry* entry) {
  if (handle_ == 0) return Fail(kInvalidHandle);
  DIR* const listing = AsListing(handle_);
  const dirent* found = nullptr;
  do {
    errno = 0;
    found = ::readdir(listing);
    if (found == nullptr) return errno == 0 ? Fail(kNoMoreFiles) : FailWithErrno();
  } while (IsDotName(found->d_name) || !IsSayable(found->d_name));
  const bool isUnknown = found->d_type == DT_UNKNOWN;  // some file systems do not tell
  entry->name = found->d_name;
  entry->isLink = isUnknown ? IsSymbolicLink(listing, found->d_name) : found->d_type == DT_LNK;
  entry->isFolder =
      isUnknown || entry->isLink ? LeadsToFolder(listing, found->d_name) : found->d_type == DT_DIR;
  return true;
}

}  // namespace vemra::platform
