#include "programs/commands/HostPaths.h"

#include <filesystem>

#include "Support/foundation/HostPath.h"
#include "programs/commands/CommandError.h"

namespace vemra::commands {

std::string PathFromPerson(const std::string& hostPath) {
  if (hostPath.empty()) throw CommandError("a path is empty");
  std::filesystem::path absolute = std::filesystem::absolute(hostPath).lexically_normal();
  if (!absolute.has_filename()) absolute = absolute.parent_path();  // a trailing slash
  std::string path = FromHostPath(absolute.string());
  if (path.empty()) {
    throw CommandError(hostPath + ": a path may not hold a backslash or a colon");
  }
  return path;
}

std::string PathForPerson(const std::string& path) {
  const std::string hostPath = ToHostPath(path);
  return hostPath.empty() ? path : hostPath;
}

}  // namespace vemra::commands
