#include "Support/foundation/HostPath.h"

#include "Support/platform/Paths.h"

namespace vemra {

std::string ToHostPath(const std::string& path) {
  return platform::ToHostPath(path);
}

std::string FromHostPath(const std::string& hostPath) {
  return platform::FromHostPath(hostPath);
}

}  // namespace vemra
