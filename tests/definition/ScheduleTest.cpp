#include "Support/definition/Schedule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <vector>

#include "Support/platform/Clock.h"
#include "tests/TimeZone.h"

namespace vemra {
namespace {

DateTime At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return DateTime::FromLocal({year, month, day, hour, minute, second});
}

// Between whole minutes, which the zones below go through.
TEST(ScheduleTest, CountsSeconds) {
  const struct {
    SCHEDULE unit;
    std::uint16_t mask;
    DateTime now;
    DateTime next;
  } kRows[] = {
      // 1 January 2024 is a Monday.
      {SCHEDULE::kWeekly, 1, At(2024, 1, 1, 5, 59, 59), At(2024, 1, 1, 6)},
      {SCHEDULE::kWeekly, 1, At(2024, 1, 1, 6, 0, 1), At(2024, 1, 8, 6)},
      {SCHEDULE::kWeekly, 0x42, At(2024, 1, 7, 7, 0, 1), At(2024, 1, 9, 6)},
      {SCHEDULE::kMonthly, 0x801, At(2024, 12, 15, 5, 59, 59), At(2024, 12, 15, 6)},
      {SCHEDULE::kMonthly, 0x801, At(2024, 12, 15, 6, 0, 1), At(2025, 1, 15, 6)},
      {SCHEDULE::kMonthly, 4, At(2024, 3, 20), At(2025, 3, 15, 6)},
  };
  DateTime next;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.next.GetSeconds());
    const platform::SetClock clock(row.now.GetSeconds());
    EXPECT_EQ(GetNextUpdateTime(row.unit, row.mask, TimeSpan(15, 6, 0, 0), next), 1);
    EXPECT_EQ(next.GetSeconds(), row.next.GetSeconds());
  }
}

TEST(ScheduleTest, NeedsAUnitAndADayOrMonth) {
  const std::pair<int, std::uint16_t> kRows[] = {
      {0, 0xFFFF},
      {3, 0xFFFF},
      {-1, 0xFFFF},
      {static_cast<int>(SCHEDULE::kWeekly), 0x80},
      {static_cast<int>(SCHEDULE::kMonthly), 0xF000},
  };
  DateTime next;
  for (const auto& [unit, mask] : kRows) {
    EXPECT_EQ(GetNextUpdateTime(static_cast<SCHEDULE>(unit), mask, TimeSpan(), next), 0) << unit;
  }
}

// A plain calculation that asks nothing of the system: days counted by hand, the zones' rules
// written down, and every moment that a time on the clock can stand for.

constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kDay = 24 * kHour;

// Days since 1970-01-01; a day beyond its month runs over.
std::int64_t DayNumber(int year, int month, int day) {
  constexpr int kDaysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  const int leapDays = (year - 1969) / 4 + (month > 2 && year % 4 == 0 ? 1 : 0);  // until 2099
  return (year - 1970) * 365 + leapDays + kDaysBefore[month - 1] + day - 1;
}

// Monday 0 to Sunday 6.
int WeekdayOf(std::int64_t dayNumber) {
  return static_cast<int>((dayNumber + 3) % 7);
}

// The clocks change on the first Sunday from a day of a month on, so long after its midnight in
// UTC, and are then so far ahead of UTC.
struct ClockChange {
  int month;
  int fromDay;
  std::int64_t afterMidnight;
  std::int64_t ahead;

  std::int64_t In(int year) const {
    std::int64_t day = DayNumber(year, month, fromDay);
    while (WeekdayOf(day) != 6) ++day;
    return day * kDay + afterMidnight;
  }
};

struct ZoneRules {
  const char* name;
  ClockChange first;  // in the year
  ClockChange second;
};

constexpr ZoneRules kZones[] = {
    {"Europe/Berlin", {3, 25, kHour, 2 * kHour}, {10, 25, kHour, kHour}},
    {"America/New_York", {3, 8, 7 * kHour, -4 * kHour}, {11, 1, 6 * kHour, -5 * kHour}},
    // Half an hour only.
    {"Australia/Lord_Howe",
     {4, 1, -9 * kHour, 21 * kHour / 2},
     {10, 1, -17 * kHour / 2, 11 * kHour}},
    // One midnight is missing.
    {"America/Santiago", {4, 2, 3 * kHour, -4 * kHour}, {9, 2, 4 * kHour, -3 * kHour}},
    {"UTC0", {3, 1, 0, 0}, {10, 1, 0, 0}},
};

class PlainZone {
 public:
  explicit PlainZone(const ZoneRules& rules) {
    for (int year = 2023; year <= 2027; ++year) {
      for (const ClockChange* change : {&rules.first, &rules.second}) {
        changes_.push_back({change->In(year), change->ahead});
      }
    }
  }

  // What the clock shows, as seconds since 1970-01-01 00:00:00 on it.
  std::int64_t ToClock(std::int64_t utc) const {
    const auto isLater = [](std::int64_t time, const Change& change) { return time < change.utc; };
    return utc + (std::upper_bound(changes_.begin(), changes_.end(), utc, isLater) - 1)->ahead;
  }

  // Whether the clock shows this then; when it never does, whether it would unchanged.
  bool CanBe(std::int64_t utc, std::int64_t clock) const {
    if (ToClock(utc) == clock) return true;
    bool isMeant = false;
    for (const Change& change : changes_) {
      if (ToClock(clock - change.ahead) == clock) return false;
      isMeant |= utc == clock - change.ahead;
    }
    return isMeant;
  }

  bool IsNearChange(std::int64_t utc) const {
    return std::any_of(changes_.begin(), changes_.end(), [utc](const Change& change) {
      return std::abs(change.utc - utc) < 8 * kDay;
    });
  }

 private:
  struct Change {
    std::int64_t utc;
    std::int64_t ahead;
  };

  std::vector<Change> changes_;
};

struct Plan {
  SCHEDULE unit;
  std::uint16_t mask;
  int day;  // of the month
  int minute;
};

constexpr Plan kPlans[] = {
    {SCHEDULE::kWeekly, 0x01, 9, 150},   {SCHEDULE::kWeekly, 0x54, 0, 0},
    {SCHEDULE::kWeekly, 0x7F, 1, 1439},  {SCHEDULE::kWeekly, 0x40, 0, 150},
    {SCHEDULE::kWeekly, 0x40, 0, 15},    {SCHEDULE::kWeekly, 0x21, 0, 720},
    {SCHEDULE::kMonthly, 0xFFF, 7, 150}, {SCHEDULE::kMonthly, 0x204, 31, 0},
    {SCHEDULE::kMonthly, 0x108, 8, 15},  {SCHEDULE::kMonthly, 0x801, 1, 1439},
    {SCHEDULE::kMonthly, 0x102, 30, 30},
};

bool IsNextWeekly(const PlainZone& zone, const Plan& plan, std::int64_t now, std::int64_t next) {
  const std::int64_t clock = zone.ToClock(now);
  const std::int64_t today = clock / kDay;
  std::int64_t first = 0;
  for (int ahead = 13; ahead >= 0; --ahead) {  // down to the first of two weeks from Monday on
    const std::int64_t due = (today - WeekdayOf(today) + ahead) * kDay + plan.minute * 60;
    if ((plan.mask >> ahead % 7 & 1) != 0 && due > clock) first = due;
  }
  const bool isThisWeek = first / kDay - today < 7 - WeekdayOf(today);
  if (isThisWeek) return next == now + (first - clock);  // elapsed, whatever the clock shows then
  return zone.CanBe(next - (first - today * kDay), today * kDay);
}

bool IsNextMonthly(const PlainZone& zone, const Plan& plan, std::int64_t now, std::int64_t next) {
  const std::int64_t clock = zone.ToClock(now);
  int month = 0;  // since January 2023
  const auto dayIn = [](int each, int day) {
    return DayNumber(2023 + each / 12, each % 12 + 1, day);
  };
  while (dayIn(month + 1, 1) <= clock / kDay) ++month;
  const std::int64_t sinceFirst = clock - dayIn(month, 1) * kDay;
  if (sinceFirst >= (plan.day - 1) * kDay + plan.minute * 60) ++month;
  while ((plan.mask >> month % 12 & 1) == 0) ++month;
  return zone.CanBe(next, dayIn(month, plan.day) * kDay + plan.minute * 60);
}

class ScheduleZoneTest : public ::testing::TestWithParam<ZoneRules> {};

// Every minute of two years, each with another plan than those around it in the hour, the day and
// the week; in the eight days before and after a change of the clocks every minute with every plan.
TEST_P(ScheduleZoneTest, AgreesWithThePlainCalculation) {
  const test::TimeZone environment(GetParam().name);
  const PlainZone zone(GetParam());
  const std::int64_t start = 1704067200;  // 2024-01-01 00:00:00 UTC
  for (std::int64_t month = 0; month < 24; ++month) {
    const DateTime each(start + month * 30 * kDay);
    const LocalTime local = each.GetLocal();
    const std::int64_t minutes = zone.ToClock(each.GetSeconds()) % kDay / 60;
    if (local.hour * 60 + local.minute != minutes) GTEST_SKIP() << "not the zone of this system";
  }

  const platform::SetClock clock(start);
  for (int minute = 0; minute < 731 * 24 * 60; ++minute) {
    const std::int64_t now = start + minute * 60;
    const bool all = zone.IsNearChange(now);
    for (std::size_t i = 0; i < std::size(kPlans); ++i) {
      if (!all && i != minute % std::size(kPlans)) continue;
      const Plan& plan = kPlans[i];
      DateTime next;
      ASSERT_EQ(
          GetNextUpdateTime(plan.unit, plan.mask, TimeSpan(plan.day, 0, plan.minute, 0), next), 1);
      const auto agrees = plan.unit == SCHEDULE::kWeekly ? IsNextWeekly : IsNextMonthly;
      ASSERT_TRUE(agrees(zone, plan, now, next.GetSeconds()))
          << "plan " << i << " at " << now << " gives " << next.GetSeconds();
    }
    platform::SetClock::Advance(60 * 1000);
  }
}

INSTANTIATE_TEST_SUITE_P(Zones, ScheduleZoneTest, ::testing::ValuesIn(kZones),
                         [](const auto& row) { return std::to_string(row.index); });

}  // namespace
}  // namespace vemra
