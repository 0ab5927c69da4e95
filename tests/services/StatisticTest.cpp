#include "Support/services/Statistic.h"

#include <gtest/gtest.h>

#include <latch>
#include <thread>
#include <vector>

#include "Support/foundation/Registry.h"
#include "Support/platform/Clock.h"
#include "Support/services/Log.h"
#include "tests/TestRegistry.h"
#include "tests/services/TextFile.h"

namespace vemra {
namespace {

class StatisticTest : public testing::Test {
 protected:
  StatisticTest() {
    SetTavoValue("Vemra Info\\Log", "LogFilePath", registry_.Folder().Path());
    config_.SetSpyLevel(1);
    log_ = std::make_unique<TavoLog>(config_);
  }
  // The counts of the events 0 to 9, of which only 1 to 7 are counted.
  std::string Counts(const std::string& name) const {
    std::string counts;
    for (std::uint32_t event = 0; event < 10; ++event) {
      counts += std::to_string(statistic_.HowMany(name, DBEvents{event}));
    }
    return counts;
  }
  std::string Log(const std::string& name) const {
    return test::ReadTextFile(registry_.Folder().Host() / (name + ".txt"));
  }

  test::TestRegistry registry_;
  platform::SetClock clock_{1'000'000'000};
  VemraConfig config_;
  TavoStatistic statistic_{1, config_};
  std::unique_ptr<TavoLog> log_;
};

TEST_F(StatisticTest, CountsAndResetsEventsOfEachDatabase) {
  for (std::uint32_t event = 0; event < 10; ++event) statistic_.Occured("a", DBEvents{event});
  statistic_.Occured("b", kQueryPerformed);
  // The sum is known only once the empty name has been counted.
  statistic_.Occured("", kNoEvent);
  EXPECT_EQ(Counts(""), "0000000000");
  statistic_.Occured("", kDatabaseUpdated);
  const struct {
    const char* name;
    DBEvents event;
    const char* a;  // what is left of each count after this reset and those before
    const char* all;
  } kResets[] = {
      {"", kQueryPerformed, "0111111100", "0211111200"},
      {"unknown", kNoEvent, "0111111100", "0211111200"},
      {"a", DBEvents{9}, "0111111100", "0211111200"},
      {"a", kQueryPerformed, "0011111100", "0111111200"},
      {"a", kNoEvent, "0000000000", "0100000100"},
      {"", kNoEvent, "0000000000", "0000000000"},
  };
  for (const auto& reset : kResets) {
    SCOPED_TRACE(testing::Message() << "'" << reset.name << "' " << reset.event);
    statistic_.ResetDatBaseEvent(reset.name, reset.event);
    EXPECT_EQ(Counts("a"), reset.a);
    EXPECT_EQ(Counts(""), reset.all);
  }
}

TEST_F(StatisticTest, DumpsEachDatabaseIntoItsOwnLog) {
  statistic_.Occured("a", kQueryPerformed);
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
  EXPECT_NE(Log("a").find("'a':\n\tPerformed queries:  1\n"), std::string::npos);
}

TEST_F(StatisticTest, DumpsWhenTheIntervalHasPassed) {
  statistic_.Occured("a", kQueryPerformed);
  statistic_.Dump(log_.get(), 1);
  const std::size_t dumpSize = Log("a").size();
  constexpr std::uint32_t kHour = 3'600'000;  // milliseconds
  const struct {
    std::uint32_t wait;
    int force;
    std::uint32_t hours;
    std::size_t dumps;  // so far
  } kRows[] = {{2 * kHour - 1000, 0, 2, 1},
               {1000, 0, 2, 2},  // just reached
               {kHour, 0, 2, 2},
               {0, 1, 2, 3},  // starts the interval anew
               {kHour, 0, 2, 3},
               {0, 0, 1, 4},
               {0, 0, 0, 5}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(&row - kRows);
    platform::SetClock::Advance(row.wait);
    config_.SetDump(row.hours);
    statistic_.Dump(log_.get(), row.force);
    EXPECT_EQ(Log("a").size(), row.dumps * dumpSize);
  }
}

TEST_F(StatisticTest, ThreadsLoseNoCount) {
  std::latch start(4);
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&, thread] {
      start.arrive_and_wait();
      for (int i = 0; i < 50'000; ++i) {
        statistic_.Occured("shared", kDocumentViewed);
        statistic_.Occured(std::to_string(i % 50), kDocumentViewed);
        if (thread == 0 && i % 10'000 == 0) statistic_.Dump(log_.get(), 0);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(statistic_.HowMany("shared", kDocumentViewed), 200'000U);
  statistic_.Occured("", kDocumentViewed);
  EXPECT_EQ(statistic_.HowMany("", kDocumentViewed), 400'001U);
}

}  // namespace
}  // namespace vemra
