#pragma once

namespace vemra::test {

// The process's time zone while one exists. name as in the TZ variable. Windows knows no zone of a
// process by these names: there everything runs in the zone of the system.
class TimeZone {
 public:
  explicit TimeZone(const char* name);
  ~TimeZone();
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
};

}  // namespace vemra::test
