#include "Support/definition/Schedule.h"

#include <gtest/gtest.h>

#include <tuple>

#include "Support/platform/Clock.h"
#include "tests/TimeZone.h"

namespace vemra {
namespace {

DateTime Next(SCHEDULE unit, std::uint16_t mask, TimeSpan time, DateTime now, int expected = 1) {
  const platform::SetClock clock(now.GetSeconds());
  DateTime result;
  EXPECT_EQ(GetNextUpdateTime(unit, mask, time, result), expected);
  return result;
}

DateTime At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return DateTime::FromLocal({year, month, day, hour, minute, second});
}

TEST(ScheduleTest, FindsTheNextUpdate) {
  const TimeSpan twoOClock(0, 2, 0, 0);
  const TimeSpan fifteenth(15, 6, 0, 0);
  const struct {
    const char* label;
    SCHEDULE unit;
    std::uint16_t mask;
    TimeSpan time;
    DateTime now;
    DateTime next;
  } kRows[] = {
      // 1 January 2024 is a Monday.
      {"later today", SCHEDULE::kWeekly, 1, twoOClock, At(2024, 1, 1, 1), At(2024, 1, 1, 2)},
      {"now is past", SCHEDULE::kWeekly, 1, twoOClock, At(2024, 1, 1, 2), At(2024, 1, 8, 2)},
      {"last second", SCHEDULE::kWeekly, 1, twoOClock, At(2024, 1, 1, 1, 59, 59),
       At(2024, 1, 1, 2)},
      {"next week", SCHEDULE::kWeekly, 1, twoOClock, At(2024, 1, 2), At(2024, 1, 8, 2)},
      {"on a Sunday", SCHEDULE::kWeekly, 0x42, twoOClock, At(2024, 1, 7, 3), At(2024, 1, 9, 2)},
      {"until Sunday", SCHEDULE::kWeekly, 0x42, twoOClock, At(2024, 1, 2, 3), At(2024, 1, 7, 2)},
      {"days are ignored", SCHEDULE::kWeekly, 1, TimeSpan(9, 2, 0, 0), At(2024, 1, 1, 1),
       At(2024, 1, 1, 2)},
      {"next year", SCHEDULE::kMonthly, 4, fifteenth, At(2024, 3, 20), At(2025, 3, 15, 6)},
      {"this year", SCHEDULE::kMonthly, 4, fifteenth, At(2024, 2, 10), At(2024, 3, 15, 6)},
      {"this month", SCHEDULE::kMonthly, 0x801, fifteenth, At(2024, 12, 15, 5, 59, 59),
       At(2024, 12, 15, 6)},
      {"month over", SCHEDULE::kMonthly, 0x801, fifteenth, At(2024, 12, 15, 6), At(2025, 1, 15, 6)},
      {"day that is not", SCHEDULE::kMonthly, 2, TimeSpan(30, 0, 0, 0), At(2023, 1, 5),
       At(2023, 3, 2)},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(Next(row.unit, row.mask, row.time, row.now).GetSeconds(), row.next.GetSeconds());
  }
  for (const int unit : {0, 3, -1}) {
    Next(static_cast<SCHEDULE>(unit), 0xFFFF, twoOClock, At(2024, 1, 1), 0);
  }
  Next(SCHEDULE::kWeekly, 0x80, twoOClock, At(2024, 1, 1), 0);
  Next(SCHEDULE::kMonthly, 0xF000, twoOClock, At(2024, 1, 1), 0);
}

// Weekly, by walking a clock face minute by minute to the first one that the mask and the time
// name.
DateTime SlowWeekly(std::uint16_t mask, int minuteOfDay, DateTime now) {
  const LocalTime local = now.GetLocal();
  int day = local.weekday - 1;
  int minute = local.hour * 60 + local.minute;
  bool nextWeek = false;
  int daysAhead = 0;
  for (int passed = 1;; ++passed) {
    if (++minute == 24 * 60) {
      minute = 0;
      ++daysAhead;
      if (++day == 7) {
        day = 0;
        nextWeek = true;
      }
    }
    if ((mask >> day & 1) == 0 || minute != minuteOfDay) continue;
    if (!nextWeek) return DateTime(now.GetSeconds() + passed * 60 - local.second);
    return At(local.year, local.month, local.day) + TimeSpan(daysAhead, 0, minute, 0);
  }
}

// Monthly, by trying every month of this year and the next.
DateTime SlowMonthly(std::uint16_t mask, int day, int minuteOfDay, DateTime now) {
  const LocalTime local = now.GetLocal();
  const std::tuple present(local.year, local.month, local.day, local.hour, local.minute,
                           local.second);
  const int hour = minuteOfDay / 60;
  const int minute = minuteOfDay % 60;
  for (int month = 0;; ++month) {
    const int year = local.year + month / 12;
    if ((mask >> month % 12 & 1) == 0) continue;
    if (std::tuple(year, month % 12 + 1, day, hour, minute, 0) > present) {
      return At(year, month % 12 + 1, day, hour, minute);
    }
  }
}

class ScheduleZoneTest : public ::testing::TestWithParam<const char*> {};

// Two years of moments that drift through the day, so that they meet every change of the clocks.
TEST_P(ScheduleZoneTest, AgreesWithTheSlowSearch) {
  const test::TimeZone zone(GetParam());
  const std::int64_t start = 1704067200;  // 2024-01-01 00:00:00 UTC
  for (std::int64_t at = 0; at < 2 * 366 * 86400; at += 7 * 3600 + 11 * 60 + 1) {
    const DateTime now(start + at);
    for (const std::uint16_t mask : {1, 0x54, 0x7F}) {
      for (const int minute : {0, 150, 1439}) {
        const TimeSpan time(28, 0, minute, 0);
        ASSERT_EQ(Next(SCHEDULE::kWeekly, mask, time, now).GetSeconds(),
                  SlowWeekly(mask, minute, now).GetSeconds())
            << now.GetSeconds() << ' ' << mask << ' ' << minute;
        ASSERT_EQ(Next(SCHEDULE::kMonthly, mask, time, now).GetSeconds(),
                  SlowMonthly(mask, 28, minute, now).GetSeconds())
            << now.GetSeconds() << ' ' << mask << ' ' << minute;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Zones, ScheduleZoneTest,
                         ::testing::Values("Europe/Berlin", "America/New_York",
                                           "Australia/Lord_Howe", "UTC0"));

}  // namespace
}  // namespace vemra
