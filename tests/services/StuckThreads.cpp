// Pools whose threads never finish. A thread that is ended by force leaves what it held, so each
// case has a process of its own. Usage: stuck_threads CASE
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "tests/services/PoolTasks.h"

namespace vemra {
namespace {

using test::CountedTask;

constexpr int kNoDelete = 0;
test::TaskCounts counts;
std::atomic<int> finished = 0;

void Compute() {
  static std::atomic<std::uint64_t> steps = 0;
  for (;;) ++steps;
}

void Sleep() {
  for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
}

void Wait() {
  static std::mutex mutex;
  static std::condition_variable never;
  std::unique_lock lock(mutex);
  for (;;) never.wait(lock);
}

void Check(bool holds, const char* what) {
  if (holds) return;
  std::printf("FAILED: %s\n", what);
  std::fflush(stdout);
  std::_Exit(1);
}

void WaitForStarts(int count) {
  while (counts.run < count) std::this_thread::yield();
}

// Two that are stuck, one that has finished and one in the queue.
void EndStuck(void (*work)()) {
  {
    CThreadPool pool(2, /*shutdownWait=*/50);
    Check(pool.DoTask(new CountedTask(counts), 0) == 1, "a task is accepted");
    Check(pool.WaitForTasksCompletion(60'000) == 0, "it finishes");
    pool.DoTask(new CountedTask(counts, work), 0);
    pool.DoTask(new CountedTask(counts, work, "kept", kNoDelete), 0);
    WaitForStarts(3);
    pool.DoTask(new CountedTask(counts), 1);
    Check(pool.GetRunningTasksCount() == 2, "two are stuck");
    Check(pool.WaitForTasksCompletion(1) == 258, "waiting for them ends");
  }
  Check(counts.run == 3, "the queued one never runs");
  Check(counts.destroyed == 4, "every task is destroyed");
}

// One that would finish soon is given the whole time, although another is stuck.
void EndOneOfMany() {
  constexpr int kThreads = 70;  // more than one wait of Windows takes
  {
    CThreadPool pool(kThreads, /*shutdownWait=*/3000);
    pool.DoTask(new CountedTask(counts, Sleep), 0);
    const auto finishSoon = [] {
      std::this_thread::sleep_for(std::chrono::milliseconds(200));
      ++finished;
    };
    for (int i = 1; i < kThreads; ++i) pool.DoTask(new CountedTask(counts, finishSoon), 0);
    WaitForStarts(kThreads);
  }
  Check(finished == kThreads - 1 && counts.destroyed == kThreads, "the others finish");
}

}  // namespace
}  // namespace vemra

// What the ended threads held is lost, which is no leak to tell of.
int main(int count, char** arguments) {
  const std::map<std::string, void (*)()> cases = {
      {"compute", [] { vemra::EndStuck(vemra::Compute); }},
      {"sleep", [] { vemra::EndStuck(vemra::Sleep); }},
      {"wait", [] { vemra::EndStuck(vemra::Wait); }},
      {"many", vemra::EndOneOfMany}};
  const auto chosen = cases.find(count == 2 ? arguments[1] : "");
  if (chosen == cases.end()) std::_Exit(2);
  chosen->second();
  std::_Exit(0);
}
