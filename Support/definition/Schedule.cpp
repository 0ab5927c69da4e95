#include "Support/definition/Schedule.h"

#include <algorithm>

namespace vemra {
namespace {

struct TimeOfDay {
  int hours;
  int minutes;
  int seconds;
};

TimeOfDay TimeOfDayIn(TimeSpan time) {
  const std::int64_t total = time.GetTotalSeconds();
  return {static_cast<int>(total / 3600 % 24), static_cast<int>(total / 60 % 60),
          static_cast<int>(total % 60)};
}

TimeSpan At(int day, const TimeOfDay& time) {
  return {day, time.hours, time.minutes, time.seconds};
}

int GetNextWeekly(std::uint16_t mask, TimeSpan time, DateTime now, DateTime& result) {
  const LocalTime today = now.GetLocal();
  const TimeOfDay due = TimeOfDayIn(time);
  const TimeSpan elapsed = At(today.weekday, {today.hour, today.minute, today.second});
  int lowest = -1;
  for (int k = 0; k < 7; ++k) {
    if ((mask >> k & 1) == 0) continue;
    if (lowest == -1) lowest = k;
    const TimeSpan candidate = At(k + 1, due);
    if (candidate <= elapsed) continue;
    result = now + (candidate - elapsed);
    return 1;
  }
  if (lowest == -1) return 0;
  LocalTime midnight = today;
  midnight.hour = midnight.minute = midnight.second = 0;
  result = DateTime::FromLocal(midnight) + At(lowest + 8 - today.weekday, due);
  return 1;
}

int GetNextMonthly(std::uint16_t mask, TimeSpan time, DateTime now, DateTime& result) {
  const LocalTime today = now.GetLocal();
  const TimeOfDay due = TimeOfDayIn(time);
  const auto day = static_cast<int>(
      std::clamp<std::int64_t>(time.GetTotalSeconds() / 86400, INT16_MIN, INT16_MAX));
  const auto inMonth = [&](int year, int month) {
    return DateTime::FromLocal({year, month, day, due.hours, due.minutes, due.seconds});
  };
  const bool laterThisMonth =
      At(day, due) > At(today.day, {today.hour, today.minute, today.second});
  int lowest = -1;
  for (int month = 1; month <= 12; ++month) {
    if ((mask >> (month - 1) & 1) == 0) continue;
    if (lowest == -1) lowest = month;
    if (month > today.month || (month == today.month && laterThisMonth)) {
      result = inMonth(today.year, month);
      return 1;
    }
  }
  if (lowest == -1) return 0;
  result = inMonth(today.year + 1, lowest);
  return 1;
}

}  // namespace

int GetNextUpdateTime(SCHEDULE unit, std::uint16_t mask, TimeSpan time, DateTime& result) {
  switch (unit) {
    case SCHEDULE::kWeekly:
      return GetNextWeekly(mask, time, DateTime::Now(), result);
    case SCHEDULE::kMonthly:
      return GetNextMonthly(mask, time, DateTime::Now(), result);
    default:
      return 0;
  }
}

}  // namespace vemra
