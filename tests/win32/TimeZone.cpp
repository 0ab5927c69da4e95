#include "tests/TimeZone.h"

namespace vemra::test {

TimeZone::TimeZone(const char*) {}
TimeZone::~TimeZone() = default;

}  // namespace vemra::test
