#pragma once

#include <compare>
#include <cstdint>

#include "Support/Export.h"

namespace vemra {

// A span of time in whole seconds, possibly negative.
class TimeSpan {
 public:
  constexpr TimeSpan() = default;
  constexpr explicit TimeSpan(std::int64_t seconds) : seconds_(seconds) {}
  constexpr TimeSpan(std::int64_t days, int hours, int minutes, int seconds)
      : seconds_(((days * 24 + hours) * 60 + minutes) * 60 + seconds) {}

  constexpr std::int64_t GetTotalSeconds() const { return seconds_; }

  constexpr auto operator<=>(const TimeSpan&) const = default;
  constexpr TimeSpan operator+(TimeSpan other) const { return TimeSpan(seconds_ + other.seconds_); }
  constexpr TimeSpan operator-(TimeSpan other) const { return TimeSpan(seconds_ - other.seconds_); }

 private:
  std::int64_t seconds_ = 0;
};

// A date-time taken apart in the local time zone.
struct LocalTime {
  int year = 1970;  // four digits
  int month = 1;    // 1 to 12
  int day = 1;      // 1 to 31
  int hour = 0;     // 0 to 23
  int minute = 0;   // 0 to 59
  int second = 0;   // 0 to 59
  int weekday = 4;  // Monday 1 to Sunday 7; ignored when a date-time is made
};

// A moment in whole seconds since 1970-01-01 00:00:00 UTC; 0 also stands for "never".
// Printed and taken apart in local time.
class DateTime {
 public:
  constexpr DateTime() = default;
  constexpr explicit DateTime(std::int64_t secondsSince1970) : seconds_(secondsSince1970) {}

  // The library's clock, which tests can set.
  SUPPORT_API static DateTime Now();
  // Whether daylight saving applies is decided by the system. A day or hour beyond its range runs
  // over into the next month or day. Gives 0 where the system cannot represent the time.
  SUPPORT_API static DateTime FromLocal(const LocalTime& local);

  constexpr std::int64_t GetSeconds() const { return seconds_; }
  SUPPORT_API LocalTime GetLocal() const;

  constexpr auto operator<=>(const DateTime&) const = default;
  constexpr DateTime operator+(TimeSpan span) const {
    return DateTime(seconds_ + span.GetTotalSeconds());
  }
  constexpr DateTime operator-(TimeSpan span) const {
    return DateTime(seconds_ - span.GetTotalSeconds());
  }
  constexpr TimeSpan operator-(DateTime other) const { return TimeSpan(seconds_ - other.seconds_); }

 private:
  std::int64_t seconds_ = 0;
};

}  // namespace vemra
