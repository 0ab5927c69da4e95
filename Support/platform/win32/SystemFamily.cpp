#include "Support/platform/SystemFamily.h"

#include <windows.h>

namespace vemra::platform {

bool IsNTFamily() {
  OSVERSIONINFOA version = {};
  version.dwOSVersionInfoSize = sizeof version;
  return GetVersionExA(&version) != 0 && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

}  // namespace vemra::platform
