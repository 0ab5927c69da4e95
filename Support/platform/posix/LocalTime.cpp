#include "Support/platform/Clock.h"

namespace vemra::platform {

bool SplitLocalTime(std::int64_t seconds, std::tm* local) {
  const std::time_t time = seconds;
  return ::localtime_r(&time, local) != nullptr;
}

}  // namespace vemra::platform
