#include "programs/commands/TimeText.h"

#include <chrono>
#include <cstdio>

namespace vemra::commands {

std::string LocalText(DateTime time) {
  const LocalTime local = time.GetLocal();
  char text[80];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", local.year, local.month,
                local.day, local.hour, local.minute, local.second);
  return text;
}

std::string UtcText(DateTime time) {
  const std::chrono::sys_seconds seconds{std::chrono::seconds(time.GetSeconds())};
  const auto day = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(seconds - day);
  char text[80];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text;
}

}  // namespace vemra::commands
