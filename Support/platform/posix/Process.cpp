#include "Support/platform/Process.h"

#include <limits.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

#include "Support/foundation/Ascii.h"
#include "Support/platform/Paths.h"
#include "Support/platform/posix/Errno.h"

namespace vemra::platform {

std::string GetProgramFileName() {
  char path[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return "";
  return FromHostPath(std::string(path, static_cast<std::size_t>(length)));
}

std::string GetCurrentFolder() {
  char path[PATH_MAX];
  return ::getcwd(path, sizeof path) == nullptr ? "" : FromHostPath(path);
}

std::string GetTempFolder() {
  const char* const folder = std::getenv("TMPDIR");
  const bool isUsable = folder != nullptr && folder[0] == '/';
  return FromHostPath(std::string(isUsable ? folder : "/tmp") + "/");
}

bool GetThisComputerName(std::string* name) {
  constexpr std::size_t kMaxLength = 15;
  char host[HOST_NAME_MAX + 1] = "";
  if (::gethostname(host, sizeof host - 1) != 0) return FailWithErrno();
  name->clear();
  for (const char* c = host; *c != '\0' && *c != '.' && name->size() < kMaxLength; ++c) {
    *name += IsAsciiLower(static_cast<unsigned char>(*c)) ? static_cast<char>(*c - 'a' + 'A') : *c;
  }
  return true;
}

std::uint32_t GetThreadId() {
  thread_local const auto id = static_cast<std::uint32_t>(::syscall(SYS_gettid));
  return id;
}

}  // namespace vemra::platform
