#include "Support/platform/Dde.h"

#include "Support/platform/InProcessDde.h"

namespace vemra::platform {

DdeManager& GetSystemDdeManager() {
  // Never destroyed: a server that lives to the end of the process still finds it.
  static InProcessDde& manager = *new InProcessDde;
  return manager;
}

}  // namespace vemra::platform
