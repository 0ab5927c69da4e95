#pragma once

#include <atomic>
#include <cstdint>
#include <thread>

namespace vemra::platform {

// Who has to sleep and who has to be woken when one thread suspends itself and others resume it.
// The system's sleep may return early and its wake may come too soon, too late or twice: the word
// alone says whether the thread goes on.
class Parking {
 public:
  // A thread that is created suspended is parked at first.
  explicit Parking(bool isParked) : word_(isParked ? kParked : kRunning) {}

  // By the thread itself. sleep() may return at any time, and must once the thread was woken.
  template <class Sleep>
  void Park(Sleep sleep) {
    for (int i = 0; i < kYields && !IsResumed(); ++i) std::this_thread::yield();
    std::uint32_t running = kRunning;
    word_.compare_exchange_strong(running, kParked);
    Stay(sleep);
  }

  // The rest of a Park: by a thread that was parked when it was created.
  template <class Sleep>
  void Stay(Sleep sleep) {
    while (word_.load(std::memory_order_acquire) == kParked) sleep();
    word_.store(kRunning, std::memory_order_relaxed);
  }

  // wake() is called when the thread sleeps or is about to.
  template <class Wake>
  void Unpark(Wake wake) {
    if (word_.exchange(kResumed) == kParked) wake();
  }

  // Whether a resumed thread has not gone on yet.
  bool IsResumed() const { return word_.load(std::memory_order_acquire) == kResumed; }

  static constexpr std::uint32_t kParked = 2;
  const std::atomic<std::uint32_t>& Word() const { return word_; }

 private:
  static constexpr std::uint32_t kRunning = 0;
  static constexpr std::uint32_t kResumed = 1;
  // Who resumes threads often gets on with it meanwhile, and a thread that is resumed by then is
  // spared the sleep, and the other the waking.
  static constexpr int kYields = 2;

  std::atomic<std::uint32_t> word_;
};

}  // namespace vemra::platform
