#include "tests/TimeZone.h"

#include <time.h>

#include <cstdlib>

namespace vemra::test {

TimeZone::TimeZone(const char* name) {
  setenv("TZ", name, 1);
  tzset();
}

TimeZone::~TimeZone() {
  unsetenv("TZ");
  tzset();
}

}  // namespace vemra::test
