#include "Support/platform/Clock.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace vemra::platform {
namespace {

std::atomic<bool> isSet = false;
std::atomic<std::int64_t> wallAtStart = 0;
std::atomic<std::uint32_t> tickAtStart = 0;
std::atomic<std::uint64_t> elapsed = 0;  // milliseconds

}  // namespace

std::int64_t GetWallSeconds() {
  if (isSet) return wallAtStart + static_cast<std::int64_t>(elapsed / 1000);
  return std::time(nullptr);  // a tenth of what a finer clock costs, and tasks ask twice each
}

std::uint32_t GetTickMilliseconds() {
  if (isSet) return static_cast<std::uint32_t>(tickAtStart + elapsed);
  const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

void SleepMilliseconds(std::uint32_t milliseconds) {
  if (isSet) {
    SetClock::Advance(milliseconds);
  } else {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  }
}

SetClock::SetClock(std::int64_t wallSeconds, std::uint32_t tickMilliseconds) {
  wallAtStart = wallSeconds;
  tickAtStart = tickMilliseconds;
  elapsed = 0;
  isSet = true;
}

SetClock::~SetClock() {
  isSet = false;
}

void SetClock::Advance(std::uint32_t milliseconds) {
  elapsed += milliseconds;
}

std::uint64_t SetClock::GetElapsedMilliseconds() {
  return elapsed;
}

}  // namespace vemra::platform
