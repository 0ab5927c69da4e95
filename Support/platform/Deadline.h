#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace vemra::platform {

inline constexpr std::uint32_t kForever = 0xFFFFFFFF;  // milliseconds

// The end of a wait for another thread. It goes by real time, whatever the library's clock is set
// to: another thread's work takes real time too.
class Deadline {
 public:
  explicit Deadline(std::uint32_t milliseconds)
      : isForever_(milliseconds == kForever),
        end_(std::chrono::steady_clock::now() +
             std::chrono::milliseconds(isForever_ ? 0 : milliseconds)) {}

  bool IsForever() const { return isForever_; }
  // Until the end, rounded up, so that 0 means that it has come; kForever when there is none.
  std::uint32_t GetMillisecondsLeft() const {
    if (isForever_) return kForever;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
    return static_cast<std::uint32_t>(std::max<std::int64_t>(left.count(), 0));
  }

 private:
  bool isForever_;
  std::chrono::steady_clock::time_point end_;
};

}  // namespace vemra::platform
