#include "Support/platform/ComputerName.h"

#include <windows.h>

namespace vemra::platform {

bool ReadComputerName(std::string* name) {
  char buffer[MAX_COMPUTERNAME_LENGTH + 1] = "";
  DWORD size = sizeof buffer;
  if (!::GetComputerNameA(buffer, &size)) return false;
  *name = buffer;
  return true;
}

}  // namespace vemra::platform
