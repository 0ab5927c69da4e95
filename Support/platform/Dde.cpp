#include "Support/platform/Dde.h"

namespace vemra::platform {
namespace {

DdeManager* setManager = nullptr;

}  // namespace

DdeManager& GetDdeManager() {
  return setManager != nullptr ? *setManager : GetSystemDdeManager();
}

void SetDdeManager(DdeManager* manager) {
  setManager = manager;
}

}  // namespace vemra::platform
