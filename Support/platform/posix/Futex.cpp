#include "Support/platform/posix/Futex.h"

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <climits>
#include <ctime>

namespace vemra::platform {

static_assert(sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t));

void FutexWait(const std::atomic<std::uint32_t>& word, std::uint32_t value,
               const Deadline& deadline) {
  constexpr std::uint32_t kPerSecond = 1000;
  constexpr long kNanoseconds = 1'000'000;  // in a millisecond
  std::timespec left{};
  if (!deadline.IsForever()) {
    const std::uint32_t milliseconds = deadline.GetMillisecondsLeft();
    left.tv_sec = static_cast<std::time_t>(milliseconds / kPerSecond);
    left.tv_nsec = static_cast<long>(milliseconds % kPerSecond) * kNanoseconds;
  }
  ::syscall(SYS_futex, &word, FUTEX_WAIT_PRIVATE, value, deadline.IsForever() ? nullptr : &left,
            nullptr, 0);
}

void FutexWakeOne(const std::atomic<std::uint32_t>* word) {
  ::syscall(SYS_futex, word, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
}

void FutexWakeAll(const std::atomic<std::uint32_t>* word) {
  ::syscall(SYS_futex, word, FUTEX_WAKE_PRIVATE, INT_MAX, nullptr, nullptr, 0);
}

}  // namespace vemra::platform
