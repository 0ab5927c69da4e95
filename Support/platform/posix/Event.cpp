#include "Support/platform/Event.h"

#include <atomic>

#include "Support/platform/posix/Futex.h"

namespace vemra::platform {

// The count of all changes is odd while the event is signalled. So a waiter is released by a Set
// even when a Reset follows before it wakes, as on Windows.
struct Event::State {
  // Counts one more change if that makes the event signalled, or not signalled.
  bool Change(bool isSignalled) {
    std::uint32_t now = changes;
    while ((now % 2 != 0) != isSignalled) {
      if (changes.compare_exchange_weak(now, now + 1)) return true;
    }
    return false;
  }

  std::atomic<std::uint32_t> changes;
  std::atomic<std::uint32_t> waiting = 0;  // a system call is made only for somebody
};

Event::Event(bool isSignalled) : state_(new State{isSignalled ? 1U : 0U}) {}

Event::~Event() = default;

void Event::Set() {
  if (state_->Change(true) && state_->waiting != 0) FutexWakeAll(&state_->changes);
}

void Event::Reset() {
  state_->Change(false);
}

std::uint32_t Event::Wait(std::uint32_t milliseconds) const {
  const std::uint32_t before = state_->changes;
  if (before % 2 != 0) return kSignalled;
  const Deadline deadline(milliseconds);
  ++state_->waiting;
  while (state_->changes == before && deadline.GetMillisecondsLeft() != 0) {
    FutexWait(state_->changes, before, deadline);
  }
  --state_->waiting;
  return state_->changes != before ? kSignalled : kTimedOut;
}

}  // namespace vemra::platform
