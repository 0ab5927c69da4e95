// The thread pool and, in the same run, what a user would pick instead: many empty tasks, made and
// posted by one thread, and one task on an idle pool. A side that loses a task never ends.
#include <benchmark/benchmark.h>
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/task_arena.h>

#include <atomic>
#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>

#include "Support/services/TPool.h"

namespace {

using benchmark::State;
using Clock = std::chrono::steady_clock;

template <class Work>
class Task : public vemra::CThreadPoolTask {
 public:
  explicit Task(Work work) : work_(std::move(work)) {}
  void Run() override { work_(); }

 private:
  Work work_;
};

class OurPool {
 public:
  explicit OurPool(int workers) : pool_(workers) {}
  template <class Work>
  void Post(Work work) {
    pool_.DoTask(new Task<Work>(std::move(work)), 1);
  }

 private:
  vemra::CThreadPool pool_;
};

class AsioPool {
 public:
  explicit AsioPool(int workers) : pool_(std::size_t(workers)) {}
  ~AsioPool() { pool_.join(); }
  template <class Work>
  void Post(Work work) {
    boost::asio::post(pool_, std::move(work));
  }

 private:
  boost::asio::thread_pool pool_;
};

class TbbPool {
 public:
  // One place is kept for the thread that posts.
  explicit TbbPool(int workers)
      : parallelism_(tbb::global_control::max_allowed_parallelism, std::size_t(workers) + 1),
        arena_(workers + 1, 1) {
    arena_.initialize();
  }
  template <class Work>
  void Post(Work work) {
    arena_.enqueue(std::move(work));
  }

 private:
  tbb::global_control parallelism_;
  tbb::task_arena arena_;
};

template <class Pool>
void EmptyTasks(State& state, int workers) {
  constexpr std::int64_t kTasks = 100'000;
  Pool pool(workers);
  for (auto _ : state) {
    std::atomic<std::int64_t> done = 0;
    for (std::int64_t i = 0; i < kTasks; ++i) {
      pool.Post([&done] { done.fetch_add(1, std::memory_order_relaxed); });
    }
    while (done.load(std::memory_order_relaxed) != kTasks) std::this_thread::yield();
  }
  state.SetItemsProcessed(state.iterations() * kTasks);
}

// From the post to the task's first instruction, after a pause in which every thread falls asleep.
template <class Pool>
void OneTask(State& state) {
  constexpr auto kPause = std::chrono::microseconds(300);
  Pool pool(2);
  for (auto _ : state) {
    std::this_thread::sleep_for(kPause);
    std::atomic<Clock::rep> start = 0;
    const Clock::time_point posted = Clock::now();
    pool.Post([&start] {
      start = Clock::now().time_since_epoch().count();
      start.notify_one();
    });
    start.wait(0);
    const Clock::duration elapsed = Clock::duration(start) - posted.time_since_epoch();
    state.SetIterationTime(std::chrono::duration<double>(elapsed).count());
  }
}

template <class Pool>
void Register(const std::string& side) {
  for (const int workers : {1, 2, 4}) {
    const std::string row = "pool-" + std::to_string(workers) + "/";
    const auto run = [workers](State& state) { EmptyTasks<Pool>(state, workers); };
    benchmark::RegisterBenchmark((row + side).c_str(), run)->UseRealTime();
  }
  benchmark::RegisterBenchmark(("pool-latency/" + side).c_str(), OneTask<Pool>)
      ->UseManualTime()
      ->Iterations(1000);
}

}  // namespace

int main(int argc, char** argv) {
  Register<OurPool>("ours");
  Register<AsioPool>("asio");
  Register<TbbPool>("tbb");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
