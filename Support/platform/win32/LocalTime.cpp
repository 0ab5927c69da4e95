#include "Support/platform/Clock.h"

namespace vemra::platform {

bool SplitLocalTime(std::int64_t seconds, std::tm* local) {
  const __time64_t time = seconds;
  return ::_localtime64_s(local, &time) == 0;
}

}  // namespace vemra::platform
