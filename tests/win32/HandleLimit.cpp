#include "tests/HandleLimit.h"

namespace vemra::test {

HandleLimit::HandleLimit(int) {}
HandleLimit::~HandleLimit() = default;

bool HandleLimit::Works() {
  return false;
}

}  // namespace vemra::test
