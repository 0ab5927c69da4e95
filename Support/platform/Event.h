#pragma once

#include <cstdint>
#include <memory>

#include "Support/platform/Deadline.h"

namespace vemra::platform {

// What a wait comes to, numbered as on Windows.
inline constexpr std::uint32_t kSignalled = 0;
inline constexpr std::uint32_t kTimedOut = 258;
inline constexpr std::uint32_t kWaitFailed = 0xFFFFFFFF;

// A flag that threads of one process wait for. It stays signalled until it is reset. Any thread may
// call anything; it must outlive every call.
class Event {
 public:
  explicit Event(bool isSignalled);
  ~Event();
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  void Set();
  void Reset();
  // kSignalled, kTimedOut, or kWaitFailed where the system could not create the event.
  std::uint32_t Wait(std::uint32_t milliseconds) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace vemra::platform
