#include "Support/platform/Process.h"

#include <limits.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

#include "Support/platform/Paths.h"

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

std::uint32_t GetThreadId() {
  return static_cast<std::uint32_t>(::syscall(SYS_gettid));
}

}  // namespace vemra::platform
