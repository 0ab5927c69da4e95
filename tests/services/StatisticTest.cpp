#include "Support/services/Statistic.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "Support/foundation/Registry.h"
#include "Support/platform/Clock.h"
#include "Support/services/Log.h"
#include "tests/TestRegistry.h"

namespace vemra {
namespace {

constexpr DBEvents kEvents[] = {
    kQueryPerformed,  kQueryRejected,   kDictionaryQuery,     kDocumentViewed,
    kDatabaseStarted, kDatabaseStopped, kDatabaseUpdated,     kNoEvent,
    DBEvents{8},      DBEvents{9},      DBEvents{0xffffffffU}};

class StatisticTest : public testing::Test {
 protected:
  // The counts of the events 1 to 7, then of the values that are none.
  std::string Counts(const std::string& name) const {
    std::string counts;
    for (const DBEvents event : kEvents) {
      counts += std::to_string(statistic_.HowMany(name, event)) + " ";
    }
    return counts;
  }

  test::TestRegistry registry_;
  platform::SetClock clock_{1'000'000'000};
  VemraConfig config_;
  TavoStatistic statistic_{1, config_};
};

TEST_F(StatisticTest, CountsEventsOfEachDatabase) {
  int times = 0;
  for (const DBEvents event : kEvents) {
    ++times;
    for (int i = 0; i < times; ++i) statistic_.Occured("a", event);
  }
  statistic_.Occured("b", kQueryRejected);
  EXPECT_EQ(Counts("a"), "1 2 3 4 5 6 7 0 0 0 0 ");
  EXPECT_EQ(Counts("b"), "0 1 0 0 0 0 0 0 0 0 0 ");
  EXPECT_EQ(Counts("c"), "0 0 0 0 0 0 0 0 0 0 0 ");
  // The sum is known only once the empty name has been counted.
  EXPECT_EQ(Counts(""), "0 0 0 0 0 0 0 0 0 0 0 ");
  statistic_.Occured("", kNoEvent);
  EXPECT_EQ(statistic_.HowMany("", kQueryRejected), 0U);
  statistic_.Occured("", kDatabaseStarted);
  EXPECT_EQ(Counts(""), "1 3 3 4 6 6 7 0 0 0 0 ");
}

TEST_F(StatisticTest, ResetsWhatIsNamed) {
  const struct {
    const char* name;
    DBEvents event;
    const char* a;  // what is left of two queries and one update
    const char* all;
  } kRows[] = {
      {"a", kQueryPerformed, "0 0 0 0 0 0 1 0 0 0 0 ", "1 0 0 0 0 0 1 0 0 0 0 "},
      {"a", kNoEvent, "0 0 0 0 0 0 0 0 0 0 0 ", "1 0 0 0 0 0 0 0 0 0 0 "},
      {"a", DBEvents{9}, "2 0 0 0 0 0 1 0 0 0 0 ", "3 0 0 0 0 0 1 0 0 0 0 "},
      {"", kQueryPerformed, "2 0 0 0 0 0 1 0 0 0 0 ", "3 0 0 0 0 0 1 0 0 0 0 "},
      {"", kNoEvent, "0 0 0 0 0 0 0 0 0 0 0 ", "0 0 0 0 0 0 0 0 0 0 0 "},
      {"unknown", kNoEvent, "2 0 0 0 0 0 1 0 0 0 0 ", "3 0 0 0 0 0 1 0 0 0 0 "},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.name << " " << row.event);
    statistic_.ResetDatBaseEvent("", kNoEvent);
    statistic_.Occured("", kQueryPerformed);
    statistic_.Occured("a", kQueryPerformed);
    statistic_.Occured("a", kQueryPerformed);
    statistic_.Occured("a", kDatabaseUpdated);
    statistic_.ResetDatBaseEvent(row.name, row.event);
    EXPECT_EQ(Counts("a"), row.a);
    EXPECT_EQ(Counts(""), row.all);
  }
}

class DumpTest : public StatisticTest {
 protected:
  DumpTest() {
    SetTavoValue("Vemra Info\\Log", "LogFilePath", registry_.Folder().Path());
    log_ = std::make_unique<TavoLog>(config_);
    config_.SetSpyLevel(1);
    config_.SetDump(2);
    statistic_.Occured("a", kQueryPerformed);
  }
  std::string Log(const std::string& name) const {
    std::string text = test::ReadHostFile(registry_.Folder().Host() / (name + ".txt"));
    std::erase(text, '\r');
    return text;
  }
  int DumpCount() const {
    int count = 0;
    const std::string text = Log("a");
    for (std::size_t at = 0; (at = text.find("Statistics", at)) != std::string::npos; ++at) ++count;
    return count;
  }

  std::unique_ptr<TavoLog> log_;
};

TEST_F(DumpTest, WritesEachDatabaseIntoItsOwnLog) {
  for (int i = 0; i < 12; ++i) statistic_.Occured("b%s", kDatabaseUpdated);
  statistic_.Dump(nullptr, 1);
  statistic_.Dump(log_.get(), 1);
  EXPECT_EQ(Log("b%s").substr(17),
            " Information: Statistics for database 'b%s':\n"
            "\tPerformed queries:  0\n"
            "\tRejected queries:   0\n"
            "\tDictionary queries: 0\n"
            "\tDocuments viewed:   0\n"
            "\tStart count:        0\n"
            "\tStop count:         0\n"
            "\tUpdates:            12\n\n");
  EXPECT_EQ(DumpCount(), 1);
  EXPECT_EQ(statistic_.HowMany("b%s", kDatabaseUpdated), 12U);
}

TEST_F(DumpTest, WaitsForTheInterval) {
  constexpr std::uint32_t kHour = 3'600'000;  // milliseconds
  const struct {
    std::uint32_t wait;
    int force;
    std::uint32_t hours;
    int dumps;  // so far
  } kRows[] = {
      {2 * kHour - 1000, 0, 2, 0},
      {1000, 0, 2, 1},  // just reached
      {kHour, 0, 2, 1},
      {0, 1, 2, 2},  // starts the interval anew
      {kHour, 0, 2, 2},
      {kHour, 0, 3, 2},
      {0, 0, 1, 3},
      {0, 0, 0, 4},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(&row - kRows);
    platform::SetClock::Advance(row.wait);
    config_.SetDump(row.hours);
    statistic_.Dump(log_.get(), row.force);
    EXPECT_EQ(DumpCount(), row.dumps);
  }
}

TEST_F(DumpTest, ThreadsLoseNoCount) {
  config_.SetDump(0);
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&, thread] {
      for (int i = 0; i < 5000; ++i) {
        statistic_.Occured("shared", kDocumentViewed);
        statistic_.Occured(std::to_string(i % 50), kDocumentViewed);
        if (thread == 0 && i % 1000 == 0) statistic_.Dump(log_.get(), 0);
        if (thread == 1) statistic_.ResetDatBaseEvent("a", kNoEvent);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(statistic_.HowMany("shared", kDocumentViewed), 20'000U);
  statistic_.Occured("", kDocumentViewed);
  EXPECT_EQ(statistic_.HowMany("", kDocumentViewed), 40'001U);
}

}  // namespace
}  // namespace vemra
