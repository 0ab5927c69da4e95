// Pools whose threads never finish. A thread that is ended by force leaves what it held, so each
// case has a process of its own. Usage: stuck_threads CASE
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

#include "Support/services/TPool.h"

namespace vemra {
namespace {

constexpr int kNoDelete = 0;
std::atomic<int> started = 0;
std::atomic<int> finished = 0;
std::atomic<int> destroyed = 0;

class StuckTask : public CThreadPoolTask {
 public:
  explicit StuckTask(void (*work)(), int autoDelete = 1)
      : CThreadPoolTask("stuck", autoDelete), work_(work) {}
  ~StuckTask() override { ++destroyed; }
  void Run() override {
    ++started;
    work_();
    ++finished;
  }

 private:
  void (*work_)();
};

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

void Quick() {}

void Check(bool holds, const char* what) {
  if (holds) return;
  std::printf("FAILED: %s\n", what);
  std::fflush(stdout);
  std::_Exit(1);
}

void WaitForStarts(int count) {
  while (started < count) std::this_thread::yield();
}

// Two that are stuck, one that has finished and one in the queue.
void EndStuck(void (*work)()) {
  {
    CThreadPool pool(2, /*shutdownWait=*/50);
    Check(pool.DoTask(new StuckTask(Quick), 0) == 1, "a task is accepted");
    Check(pool.WaitForTasksCompletion(60'000) == 0, "it finishes");
    pool.DoTask(new StuckTask(work), 0);
    pool.DoTask(new StuckTask(work, kNoDelete), 0);
    WaitForStarts(3);
    pool.DoTask(new StuckTask(Quick), 1);
    Check(pool.GetRunningTasksCount() == 2, "two are stuck");
    Check(pool.WaitForTasksCompletion(1) == 258, "waiting for them ends");
  }
  Check(started == 3 && finished == 1, "the queued one never runs");
  Check(destroyed == 4, "every task is destroyed");
}

// One that would finish soon is given the whole time, although another is stuck.
void EndOneOfMany() {
  constexpr int kThreads = 70;  // more than one wait of Windows takes
  {
    CThreadPool pool(kThreads, /*shutdownWait=*/3000);
    pool.DoTask(new StuckTask(Sleep), 0);
    for (int i = 1; i < kThreads; ++i) {
      pool.DoTask(
          new StuckTask([] { std::this_thread::sleep_for(std::chrono::milliseconds(200)); }), 0);
    }
    WaitForStarts(kThreads);
  }
  Check(finished == kThreads - 1 && destroyed == kThreads, "the others finish");
}

int Main(const std::string& name) {
  if (name == "compute") {
    EndStuck(Compute);
  } else if (name == "sleep") {
    EndStuck(Sleep);
  } else if (name == "wait") {
    EndStuck(Wait);
  } else if (name == "many") {
    EndOneOfMany();
  } else {
    return 2;
  }
  std::printf("%s: ended\n", name.c_str());
  std::fflush(stdout);
  return 0;
}

}  // namespace
}  // namespace vemra

// What the ended threads held is lost, which is no leak to tell of.
int main(int count, char** arguments) {
  std::_Exit(count == 2 ? vemra::Main(arguments[1]) : 2);
}
