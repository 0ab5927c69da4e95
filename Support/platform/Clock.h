#pragma once

#include <cstdint>
#include <ctime>

// The one clock of the library: every "now" and every wait comes from here, so that a test can set
// it and never waits in real time. Safe from any thread.
namespace vemra::platform {

std::int64_t GetWallSeconds();        // since 1970-01-01 00:00:00 UTC
std::uint32_t GetTickMilliseconds();  // since some moment before; wraps after 49.7 days
void SleepMilliseconds(std::uint32_t milliseconds);

// Takes a moment apart in the local time zone. False where the system cannot.
bool SplitLocalTime(std::int64_t seconds, std::tm* local);

// While one exists, the clock stands at the given moment and moves only by Advance and by sleeping,
// which then takes no real time. One at a time.
class SetClock {
 public:
  explicit SetClock(std::int64_t wallSeconds, std::uint32_t tickMilliseconds = 0);
  ~SetClock();
  SetClock(const SetClock&) = delete;
  SetClock& operator=(const SetClock&) = delete;

  static void Advance(std::uint32_t milliseconds);
  // How long the clock has been moved on since it was set.
  static std::uint64_t GetElapsedMilliseconds();
};

}  // namespace vemra::platform
