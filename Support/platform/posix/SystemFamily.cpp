#include "Support/platform/SystemFamily.h"

namespace vemra::platform {

bool IsNTFamily() {
  return false;
}

}  // namespace vemra::platform
