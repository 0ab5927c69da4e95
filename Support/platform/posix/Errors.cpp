#include "Support/platform/Errors.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "Support/platform/posix/Errno.h"

namespace vemra::platform {
namespace {

// Codes of errors that have no number on Windows have this bit, which Windows leaves to
// applications, and the errno value.
constexpr std::uint32_t kErrnoBit = 0x20000000;

struct CodePair {
  int error;
  std::uint32_t code;
};

// In both directions the first match counts.
constexpr CodePair kCodes[] = {
    {0, 0},
    {ENOENT, kFileNotFound},
    {ENOTDIR, kPathNotFound},
    {EMFILE, 4},
    {ENFILE, 4},
    {EACCES, kAccessDenied},
    {EPERM, kAccessDenied},
    {EISDIR, kAccessDenied},
    {EBADF, kInvalidHandle},
    {ENOMEM, 8},
    {EXDEV, 17},
    {EROFS, 19},
    {ENOTSUP, 50},
    {EINVAL, 87},
    {ENOSPC, 112},
    {EDQUOT, 112},
    {ENOTEMPTY, 145},
    {EBUSY, 170},
    {EEXIST, kAlreadyExists},
    {ENAMETOOLONG, 206},
    {EFBIG, 223},
    {EIO, 1117},
    {ELOOP, 1921},
};

thread_local std::uint32_t lastError = 0;

std::string ParentOf(const std::string& hostPath) {
  const std::size_t slash = hostPath.rfind('/');
  if (slash == std::string::npos) return ".";
  return hostPath.substr(0, slash == 0 ? 1 : slash);
}

}  // namespace

std::uint32_t GetLastErrorCode() {
  return lastError;
}

void SetLastErrorCode(std::uint32_t code) {
  lastError = code;
}

std::uint32_t ErrorFromErrno(int error) {
  for (const CodePair& pair : kCodes) {
    if (pair.error == error) return pair.code;
  }
  return kErrnoBit | static_cast<std::uint32_t>(error);
}

std::string GetErrorText(std::uint32_t code) {
  if (code == kSharingViolation) return "File in use by another opener";
  if (code == kNoMoreFiles) return "No more files";
  if (code == kInvalidName) return "Not a file name";
  if (code == kNotAFolder) return "Not a directory";
  char buffer[256];
  for (const CodePair& pair : kCodes) {
    if (pair.code == code) return ::strerror_r(pair.error, buffer, sizeof buffer);
  }
  if ((code & kErrnoBit) == 0) return "";
  return ::strerror_r(static_cast<int>(code & ~kErrnoBit), buffer, sizeof buffer);
}

void WriteDebugOutput(const char* text) {
  std::fputs(text, stderr);
}

bool Fail(std::uint32_t code) {
  SetLastErrorCode(code);
  return false;
}

bool FailWithErrno() {
  return Fail(ErrorFromErrno(errno));
}

bool FailWithErrno(const std::string& hostPath) {
  if (errno != ENOENT) return FailWithErrno();
  struct stat parent {};
  const bool hasParent = ::stat(ParentOf(hostPath).c_str(), &parent) == 0;
  return Fail(hasParent ? kFileNotFound : kPathNotFound);
}

}  // namespace vemra::platform
