#pragma once

#include <atomic>
#include <cstdlib>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <utility>

#include "Support/platform/Deadline.h"
#include "Support/services/TPool.h"

namespace vemra::test {

// How much is done: little in the ordinary tests, as much as the environment says in a soak.
inline int PoolCount(const char* variable, int ordinary) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? ordinary : std::atoi(value);
}

// Waits for what other threads do; false when that takes far too long.
template <class Condition>
bool Eventually(Condition condition) {
  const platform::Deadline deadline(20'000);
  while (!condition()) {
    if (deadline.GetMillisecondsLeft() == 0) return false;
    std::this_thread::yield();
  }
  return true;
}

// What became of tasks.
struct TaskCounts {
  std::atomic<int> made = 0;
  std::atomic<int> run = 0;
  std::atomic<int> destroyed = 0;
};

class CountedTask : public CThreadPoolTask {
 public:
  explicit CountedTask(TaskCounts& counts, std::function<void()> work = nullptr,
                       const std::string& name = "counted", int autoDelete = 1)
      : CThreadPoolTask(name, autoDelete), counts_(counts), work_(std::move(work)) {
    ++counts_.made;
  }
  ~CountedTask() override { ++counts_.destroyed; }
  void Run() override {
    ++counts_.run;
    if (work_) work_();
  }

 private:
  TaskCounts& counts_;
  std::function<void()> work_;
};

// What tasks wait at until it is opened.
class Gate {
 public:
  void Open() { opened_.set_value(); }
  void Pass() const { open_.wait(); }

 private:
  std::promise<void> opened_;
  std::shared_future<void> open_ = opened_.get_future();
};

}  // namespace vemra::test
