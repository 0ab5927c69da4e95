#include "Support/services/TPool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <vector>

#include "Support/foundation/INIException.h"
#include "Support/foundation/Registry.h"
#include "Support/platform/Clock.h"
#include "tests/TestRegistry.h"
#include "tests/services/PoolTasks.h"
#include "tests/services/TextFile.h"

namespace vemra {
namespace {

using test::CountedTask;
using test::Eventually;
using test::Gate;
using test::TaskCounts;
using testing::ElementsAre;

constexpr std::uint32_t kForever = 0xFFFFFFFF;

std::vector<std::string> Shown(const CThreadPool& pool) {
  CTaskInfoArray list;
  pool.GetRunningTasksList(list, 0);
  std::vector<std::string> shown;
  for (const TaskInfo& info : list) {
    shown.push_back(info.name + "|" + info.detail + "|" + std::to_string(info.time.GetSeconds()));
  }
  return shown;
}

TEST(TPoolTest, ShowsRunningTasksAndIdleThreads) {
  platform::SetClock clock(1000);
  TaskCounts counts;
  Gate gate;
  CThreadPool pool(3);
  CThreadPoolTask* query = nullptr;
  const auto work = [&] {
    query->SetDetail("a detail");
    gate.Pass();
  };
  query = new CountedTask(counts, work, "query");
  EXPECT_EQ(pool.DoTask(query, 0), 1U);
  EXPECT_EQ(pool.DoTask(new CountedTask(counts), 0), 2U);
  ASSERT_TRUE(Eventually([&] {
    return counts.destroyed == 1 && Shown(pool).size() == 2 && !query->GetDetail().empty();
  }));
  platform::SetClock::Advance(5000);
  EXPECT_THAT(Shown(pool), ElementsAre("query|a detail|1000", "Query Thread (Idle)|N/A|1005"));
  CTaskInfoArray list;
  pool.GetRunningTasksList(list, 1);
  pool.GetRunningTasksList(list, 1);
  EXPECT_EQ(list.GetSize(), 4);
  EXPECT_EQ(list[2].name, "query");
  gate.Open();
}

TEST(TPoolTest, TheThreadThatWasSuspendedLastIsResumedFirst) {
  TaskCounts counts;
  std::thread::id threads[4];
  Gate gates[2];
  CThreadPool pool(2);
  for (int i = 0; i < 2; ++i) {
    pool.DoTask(new CountedTask(counts,
                                [&, i] {
                                  threads[i] = std::this_thread::get_id();
                                  gates[i].Pass();
                                }),
                0);
  }
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(Eventually([&] { return counts.run == 2; }));
    gates[i].Open();
    // The running tasks come first. A thread is neither while it destroys its task.
    ASSERT_TRUE(Eventually([&] {
      const std::vector<std::string> shown = Shown(pool);
      return shown.size() == 2 && shown[std::size_t(1 - i)].starts_with("Query");
    }));
  }
  for (int i = 2; i < 4; ++i) {
    pool.DoTask(new CountedTask(counts, [&, i] { threads[i] = std::this_thread::get_id(); }), 0);
    ASSERT_EQ(pool.WaitForTasksCompletion(kForever), 0U);
    EXPECT_EQ(threads[i], threads[1]);
  }
  EXPECT_NE(threads[0], threads[1]);
  EXPECT_EQ(Shown(pool).size(), 2U);  // the other one is idle all the time
  EXPECT_EQ(pool.GetMaxNumThreads(), 2) << "at most, not at last";
}

TEST(TPoolTest, IdleThreadsEndWithoutForce) {
  const platform::Deadline deadline(20'000);
  {
    TaskCounts counts;
    CThreadPool pool(2, /*shutdownWait=*/30'000);
    for (int i = 0; i < 2; ++i) pool.DoTask(new CountedTask(counts), 0);
    EXPECT_EQ(pool.WaitForTasksCompletion(kForever), 0U);
  }
  EXPECT_NE(deadline.GetMillisecondsLeft(), 0U);
}

TEST(TPoolTest, AFlagLeavesATaskToItsOwnerOnceItHasRun) {
  TaskCounts counts;
  CountedTask task(counts, nullptr, "mine", 0);
  Gate gate;
  CThreadPool pool(1);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(pool.DoTask(&task, 0), std::uint32_t(i));  // the same one again
    EXPECT_EQ(pool.WaitForTasksCompletion(kForever), 0U);
  }
  EXPECT_EQ(counts.run, 3);
  EXPECT_EQ(counts.destroyed, 0);
  EXPECT_EQ(task.GetId(), 3U);
  EXPECT_EQ(pool.DoTask(nullptr, 1), 0U);
  // Those that never run go whatever their flag.
  pool.DoTask(new CountedTask(counts, [&] { gate.Pass(); }), 1);
  for (int i = 0; i < 4; ++i) pool.DoTask(new CountedTask(counts, nullptr, "", i % 2), 1);
  EXPECT_TRUE(Eventually([&] { return counts.run == 4; }));
  pool.RemoveQueuedTasks();
  EXPECT_EQ(counts.destroyed, 4);
  gate.Open();
}

TEST(TPoolTest, NothingMovesWhileAClientHoldsTheLock) {
  TaskCounts counts;
  CThreadPool pool;
  {
    const std::lock_guard first(pool);
    const std::lock_guard again(pool);
    EXPECT_EQ(pool.DoTask(new CountedTask(counts), 0), 1U);
    EXPECT_EQ(pool.DoTask(new CountedTask(counts), 0), 2U);
    EXPECT_EQ(pool.GetRunningTasksCount(), 0);
  }
  EXPECT_EQ(pool.WaitForTasksCompletion(kForever), 0U);
  EXPECT_EQ(counts.destroyed, 2);
}

class TPoolTraceTest : public testing::Test {
 protected:
  TPoolTraceTest() {
    SetTavoValue("Vemra Info\\Trace", "TraceFilePath", registry_.Folder().Path("t.txt"));
    SetTavoValue("Vemra Info\\Trace", "Module", std::uint32_t{0x80});
  }
  // The messages, with the first thread as "#".
  std::vector<std::string> Lines() const {
    std::vector<std::string> lines = test::ReadLines(registry_.Folder().Host() / "t.txt");
    std::string thread;
    for (std::string& line : lines) {
      EXPECT_EQ(line.substr(17, 7), " TPool(") << line;
      line.erase(0, line.find("): ") + 3);
      const std::size_t at = line.find("0x");
      if (at == std::string::npos) continue;
      const std::string named = line.substr(at, line.find_first_of(" .", at) - at);
      if (thread.empty()) thread = named;
      if (named == thread) line.replace(at, named.size(), "#");
    }
    return lines;
  }

  test::TestRegistry registry_;
};

TEST_F(TPoolTraceTest, TellsTheLifeOfAThread) {
  TaskCounts counts;
  {
    TavoTrace trace;
    CThreadPool pool(1, 5000, trace);
    Gate gate;
    pool.DoTask(new CountedTask(
                    counts, [&] { gate.Pass(); }, "first"),
                0);
    CountedTask refused(counts, nullptr, "second");
    EXPECT_EQ(pool.DoTask(&refused, 0), 0U);
    gate.Open();
    const auto isIdle = [&] { return Lines().back() == "Thread # is idle, suspending..."; };
    ASSERT_TRUE(Eventually(isIdle));
    pool.DoTask(new CountedTask(counts, nullptr, "third"), 0);
    ASSERT_TRUE(Eventually([&] { return counts.destroyed == 2 && isIdle(); }));
  }
  EXPECT_THAT(Lines(),
              ElementsAre("New task arrived: \"first\".", "Created new thread #.",
                          "New task arrived: \"second\".", "1 threads already running (1 max).",
                          "No thread available for task \"second\".",
                          "Thread # is idle, suspending...", "New task arrived: \"third\".",
                          "Activating suspended thread #.", "Thread # is idle, suspending..."));
}

TEST_F(TPoolTraceTest, TasksThatThrowEndAsFinished) {
  SetTavoValue("Vemra Info\\Trace", "Level", 1U);  // errors only
  TaskCounts counts;
  {
    TavoTrace trace;
    CThreadPool pool(1, 5000, trace);
    const struct {
      const char* name;
      void (*work)();
    } kTasks[] = {{"one", [] { throw std::runtime_error("a\"%s"); }},
                  {"two", [] { throw TavoINIException("no key"); }},
                  {"three", [] { throw 3; }},
                  {"four", [] {}}};
    for (const auto& task : kTasks) pool.DoTask(new CountedTask(counts, task.work, task.name), 1);
    EXPECT_EQ(pool.WaitForTasksCompletion(kForever), 0U);
    EXPECT_EQ(pool.GetMaxNumThreads(), 1);
  }
  EXPECT_EQ(counts.destroyed, 4);
  EXPECT_THAT(Lines(), ElementsAre("Task \"one\" ended by an exception: a\"%s",
                                   "Task \"two\" ended by an exception: no key",
                                   "Task \"three\" ended by an exception: unknown"));
}

TEST(TPoolStressTest, ProducersLoseNoTask) {
  constexpr int kProducers = 8;
  constexpr int kBacklog = 100'000;
  const int each = test::PoolCount("VEMRA_SOAK_POOL_TASKS", 40'000) / kProducers;
  std::vector<std::atomic<unsigned char>> runs(std::size_t(each) * kProducers);
  {
    CThreadPool pool(4);
    std::vector<std::thread> producers;
    TaskCounts counts;
    for (int producer = 0; producer < kProducers; ++producer) {
      producers.emplace_back([&, producer] {
        for (int i = 0; i < each; ++i) {
          std::atomic<unsigned char>& mine = runs[std::size_t(producer * each + i)];
          while (counts.made - counts.destroyed > kBacklog) std::this_thread::yield();
          ASSERT_NE(pool.DoTask(new CountedTask(counts, [&mine] { ++mine; }), 1), 0U);
        }
      });
    }
    for (std::thread& producer : producers) producer.join();
    EXPECT_EQ(pool.WaitForTasksCompletion(kForever), 0U);
    EXPECT_EQ(counts.destroyed, each * kProducers);
    EXPECT_LE(pool.GetMaxNumThreads(), 4);
  }
  for (const auto& run : runs) ASSERT_EQ(run, 1);
}

// One task on an idle pool, again and again: a resume that is lost leaves it waiting for ever.
TEST(TPoolStressTest, NoResumeIsLost) {
  TaskCounts counts;
  CThreadPool pool(2);
  for (int i = 1; i <= 5000; ++i) {
    pool.DoTask(new CountedTask(counts), 0);
    if (i % 3 == 0) std::this_thread::yield();  // now and then the thread gets to sleep first
    ASSERT_EQ(pool.WaitForTasksCompletion(20'000), 0U) << i;
    ASSERT_EQ(counts.destroyed, i);
  }
}

// Each task posts others until the pool refuses them, while the pool is destroyed.
void PostOn(CThreadPool& pool, TaskCounts& counts) {
  for (int i = 0; i < 2; ++i) {
    auto* const task = new CountedTask(counts, [&] { PostOn(pool, counts); });
    if (pool.DoTask(task, i) == 0) delete task;
  }
}

TEST(TPoolStressTest, PoolsDieUnderLoad) {
  const int pools = test::PoolCount("VEMRA_SOAK_POOL_POOLS", 200);
  std::mt19937 random(7);
  for (int i = 0; i < pools; ++i) {
    SCOPED_TRACE(i);
    TaskCounts counts;
    {
      CThreadPool pool(1 + int(random() % 4));
      PostOn(pool, counts);
      // Anywhere from the first thread's start to a long queue.
      const int tasks = 1 << (random() % 8);
      EXPECT_TRUE(Eventually([&] { return counts.made >= tasks; }));
      if (random() % 2 == 0) pool.RemoveQueuedTasks();
    }
    ASSERT_EQ(counts.destroyed, counts.made);
  }
}

}  // namespace
}  // namespace vemra
