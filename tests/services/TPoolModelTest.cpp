// Every short sequence of operations on a pool against a plain model of what it should do.
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string_view>
#include <vector>

#include "Support/platform/Clock.h"
#include "Support/platform/SystemFamily.h"
#include "tests/services/PoolTasks.h"

namespace vemra {
namespace {

constexpr int kMaxThreads = 1;  // at first
constexpr int kMaxWait = 2;     // seconds

// Post, post unless busy, finish the oldest or the newest of the running tasks, remove the queued
// ones, let a second pass, allow a thread more or less.
constexpr std::string_view kOperations = "PUONRSML";

// What is to be seen of a pool when nothing moves. Tasks go by their ids.
struct Sight {
  std::set<std::uint32_t> running;
  std::vector<std::uint32_t> started;  // in this order
  int idle = 0;
  int peak = 0;
  int destroyed = 0;

  bool operator==(const Sight&) const = default;
};

class Model {
 public:
  std::uint32_t Post(bool queueIfBusy) {
    const bool hasThread = sight_.idle > 0 || Working() < maxThreads_;
    if (!hasThread && !(queueIfBusy && MayQueue())) return 0;
    queue_.push_back({++lastId_, now_});
    if (hasThread) {
      if (sight_.idle > 0) --sight_.idle;
      Start();
    }
    return lastId_;
  }
  void Finish(std::uint32_t id) {
    sight_.running.erase(id);
    ++sight_.destroyed;
    if (queue_.empty()) {
      ++sight_.idle;
    } else {
      Start();
    }
  }
  void RemoveQueued() {
    sight_.destroyed += int(queue_.size());
    queue_.clear();
  }
  void OneSecond() { ++now_; }
  void SetMaxThreads(int threads) { maxThreads_ = threads; }
  int GetMaxThreads() const { return maxThreads_; }
  const Sight& Get() const { return sight_; }

 private:
  struct Queued {
    std::uint32_t id;
    int time;
  };
  int Working() const { return int(sight_.running.size()); }
  bool MayQueue() const {
    return int(queue_.size()) < std::max(Working(), 1) || now_ - queue_.back().time < kMaxWait;
  }
  void Start() {
    sight_.running.insert(queue_.front().id);
    sight_.started.push_back(queue_.front().id);
    queue_.pop_front();
    sight_.peak = std::max(sight_.peak, Working());
  }

  int maxThreads_ = kMaxThreads;
  int now_ = 0;
  std::uint32_t lastId_ = 0;
  std::deque<Queued> queue_;
  Sight sight_;
};

// The pool itself, with tasks that run until they are told to finish.
class Real {
 public:
  Real() { pool_.SetMaxWaitSeconds(kMaxWait); }
  ~Real() {
    for (auto& [task, gate] : gates_) gate->Open();
  }
  std::uint32_t Post(bool queueIfBusy) {
    const std::uint32_t number = posted_ + 1;
    auto gate = std::make_shared<test::Gate>();
    const auto work = [this, number, gate] {
      Started(number);
      gate->Pass();
    };
    auto* const task = new test::CountedTask(counts_, work, std::to_string(number));
    const std::uint32_t id = pool_.DoTask(task, queueIfBusy ? 1 : 0);
    if (id == 0) {
      delete task;
      --counts_.destroyed;
    } else {
      posted_ = number;
      gates_.emplace(number, gate);
    }
    return id;
  }
  void Finish(std::uint32_t id) {
    gates_.at(id)->Open();
    gates_.erase(id);
  }
  void Look(Sight* sight) {
    CTaskInfoArray list;
    pool_.GetRunningTasksList(list, 0);
    for (const TaskInfo& info : list) {
      if (info.name == "Query Thread (Idle)" && info.detail == "N/A") {
        ++sight->idle;
      } else {
        sight->running.insert(std::uint32_t(std::stoul(info.name)));
      }
    }
    sight->peak = pool_.GetMaxNumThreads();
    sight->destroyed = counts_.destroyed;
    const std::lock_guard guard(mutex_);
    sight->started = started_;
  }
  CThreadPool& Pool() { return pool_; }

 private:
  void Started(std::uint32_t number) {
    const std::lock_guard guard(mutex_);
    started_.push_back(number);
  }

  std::uint32_t posted_ = 0;
  test::TaskCounts counts_;
  std::mutex mutex_;
  std::vector<std::uint32_t> started_;
  std::map<std::uint32_t, std::shared_ptr<test::Gate>> gates_;
  CThreadPool pool_{kMaxThreads};
};

class Both {
 public:
  // What differs, or nothing.
  std::string Do(char operation) {
    switch (operation) {
      case 'P':
      case 'U': {
        const bool queueIfBusy = operation == 'P';
        if (real_.Post(queueIfBusy) != model_.Post(queueIfBusy)) return "the id";
        break;
      }
      case 'O':
        if (!Running().empty()) Finish(*Running().begin());
        break;
      case 'N':
        if (!Running().empty()) Finish(*Running().rbegin());
        break;
      case 'R':
        model_.RemoveQueued();
        real_.Pool().RemoveQueuedTasks();
        break;
      case 'S':
        model_.OneSecond();
        platform::SetClock::Advance(1000);
        break;
      default:
        SetMaxThreads(model_.GetMaxThreads() + (operation == 'M' ? 1 : -1));
    }
    return Compare();
  }

 private:
  const std::set<std::uint32_t>& Running() const { return model_.Get().running; }
  void Finish(std::uint32_t id) {
    model_.Finish(id);
    real_.Finish(id);
  }
  void SetMaxThreads(int threads) {
    model_.SetMaxThreads(threads);
    real_.Pool().SetMaxThreads(threads);
  }
  std::string Compare() {
    const bool isSame = test::Eventually([this] {
      Sight sight;
      real_.Look(&sight);
      return sight == model_.Get();
    });
    if (!isSame) return "what is to be seen";
    if (real_.Pool().GetRunningTasksCount() != int(Running().size())) return "the count";
    const std::uint32_t expected = Running().empty() ? 0 : 258;
    // The last thread tells of its idleness at the end.
    return real_.Pool().WaitForTasksCompletion(0) == expected ? "" : "whether all is done";
  }

  platform::SetClock clock_{1'000'000'000};
  Model model_;
  Real real_;
};

TEST(TPoolModelTest, EverySequence) {
  // Under Wine a thread's sleep and waking cost a hundred times what they do on Linux.
  const int length = test::PoolCount("VEMRA_SOAK_POOL_MODEL", platform::IsNTFamily() ? 3 : 4);
  int sequences = 1;
  for (int i = 0; i < length; ++i) sequences *= int(kOperations.size());
  for (int sequence = 0; sequence < sequences; ++sequence) {
    std::string operations = "P";  // so that every sequence has something to do
    for (int rest = sequence; int(operations.size()) <= length; rest /= int(kOperations.size())) {
      operations += kOperations[std::size_t(rest) % kOperations.size()];
    }
    Both both;
    for (const char operation : operations) ASSERT_EQ(both.Do(operation), "") << operations;
  }
}

}  // namespace
}  // namespace vemra
