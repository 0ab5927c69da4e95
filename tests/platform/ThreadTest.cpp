#include "Support/platform/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "Support/platform/Event.h"

namespace vemra::platform {
namespace {

struct Turns {
  Thread thread;
  std::atomic<int> taken = 0;
  int limit = 0;
};

// Takes a turn after each Suspend.
void TakeTurns(void* argument) {
  Turns& turns = *static_cast<Turns*>(argument);
  while (++turns.taken < turns.limit) turns.thread.Suspend();
}

TEST(ThreadTest, RunsFromTheFirstResumeOn) {
  Turns turns;
  turns.limit = 1;
  ASSERT_TRUE(turns.thread.Create(TakeTurns, &turns));
  EXPECT_FALSE(turns.thread.WaitForEnd(Deadline(1)));
  EXPECT_EQ(turns.taken, 0);
  EXPECT_NE(turns.thread.GetHandle(), 0U);
  turns.thread.Resume();
  EXPECT_TRUE(turns.thread.WaitForEnd(Deadline(kForever)));
  EXPECT_EQ(turns.taken, 1);
}

// Resumed the moment that it has taken its turn: before, during and after its Suspend.
TEST(ThreadTest, EveryResumeGivesOneTurn) {
  Turns turns;
  turns.limit = 5000;
  ASSERT_TRUE(turns.thread.Create(TakeTurns, &turns));
  for (int turn = 1; turn <= turns.limit; ++turn) {
    turns.thread.Resume();
    const Deadline deadline(20'000);
    while (turns.taken < turn && deadline.GetMillisecondsLeft() != 0) std::this_thread::yield();
    ASSERT_EQ(turns.taken, turn);
  }
  EXPECT_TRUE(turns.thread.WaitForEnd(Deadline(kForever)));
}

TEST(ThreadTest, TwoResumesBeforeASuspendAreOne) {
  struct Twice {
    static void Run(void* argument) {
      Twice& self = *static_cast<Twice*>(argument);
      self.started.Set();
      self.go.Wait(kForever);
      self.thread.Suspend();
      self.once = true;
      self.thread.Suspend();
    }
    Thread thread;
    Event started{false};
    Event go{false};
    std::atomic<bool> once = false;
  } twice;
  ASSERT_TRUE(twice.thread.Create(Twice::Run, &twice));
  twice.thread.Resume();
  ASSERT_EQ(twice.started.Wait(20'000), kSignalled);
  twice.thread.Resume();
  twice.thread.Resume();
  twice.go.Set();
  EXPECT_FALSE(twice.thread.WaitForEnd(Deadline(20)));
  EXPECT_TRUE(twice.once);
  twice.thread.Resume();
  EXPECT_TRUE(twice.thread.WaitForEnd(Deadline(kForever)));
}

TEST(EventTest, StaysUntilItIsReset) {
  Event event(true);
  EXPECT_EQ(event.Wait(0), kSignalled);
  EXPECT_EQ(event.Wait(kForever), kSignalled);
  event.Reset();
  event.Reset();
  EXPECT_EQ(event.Wait(1), kTimedOut);
  event.Set();
  event.Set();
  EXPECT_EQ(event.Wait(0), kSignalled);
}

// Whoever waits when it is set is released, although it is reset at once.
TEST(EventTest, ASetReleasesAllThatWait) {
  Event event(false);
  std::atomic<int> released = 0;
  std::thread waiters[3];
  for (std::thread& waiter : waiters) {
    waiter = std::thread([&] {
      if (event.Wait(30'000) == kSignalled) ++released;
    });
  }
  const Deadline deadline(20'000);
  while (released < 3 && deadline.GetMillisecondsLeft() != 0) {
    event.Set();
    event.Reset();
    std::this_thread::yield();
  }
  for (std::thread& waiter : waiters) waiter.join();
  EXPECT_EQ(released, 3);
}

}  // namespace
}  // namespace vemra::platform
