#include "Support/foundation/DateTime.h"

#include <ctime>

#include "Support/platform/Clock.h"

namespace vemra {

DateTime DateTime::Now() {
  return DateTime(platform::GetWallSeconds());
}

DateTime DateTime::FromLocal(const LocalTime& local) {
  std::tm parts{};
  parts.tm_year = local.year - 1900;
  parts.tm_mon = local.month - 1;
  parts.tm_mday = local.day;
  parts.tm_hour = local.hour;
  parts.tm_min = local.minute;
  parts.tm_sec = local.second;
  parts.tm_isdst = -1;
  // -1 is also the second before 1970; only success fills in the day of the week.
  parts.tm_wday = -1;
  const std::time_t seconds = std::mktime(&parts);
  return parts.tm_wday < 0 ? DateTime() : DateTime(seconds);
}

LocalTime DateTime::GetLocal() const {
  std::tm parts{};
  LocalTime local;
  if (!platform::SplitLocalTime(seconds_, &parts)) return local;
  local.year = parts.tm_year + 1900;
  local.month = parts.tm_mon + 1;
  local.day = parts.tm_mday;
  local.hour = parts.tm_hour;
  local.minute = parts.tm_min;
  local.second = parts.tm_sec;
  local.weekday = parts.tm_wday == 0 ? 7 : parts.tm_wday;
  return local;
}

}  // namespace vemra
