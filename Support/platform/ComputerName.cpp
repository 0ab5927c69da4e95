#include "Support/platform/ComputerName.h"

#include <optional>

#include "Support/platform/Errors.h"

namespace vemra::platform {
namespace {

std::optional<std::string> setName;

}  // namespace

bool GetThisComputerName(std::string* name) {
  if (!setName) return ReadComputerName(name);
  if (setName->empty()) {
    SetLastErrorCode(kInvalidName);
    return false;
  }
  *name = *setName;
  return true;
}

SetComputerName::SetComputerName(const std::string& name) {
  setName = name;
}

SetComputerName::~SetComputerName() {
  setName.reset();
}

}  // namespace vemra::platform
