#include "Support/services/StopIndexingEvent.h"

#include <gtest/gtest.h>

#include "Support/platform/NamedEvent.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

// With a database name that no other test has: events belong to the whole computer.
class StopIndexingEventTest : public testing::Test {
 protected:
  auto Get(int create, const std::string& more = "") const {
    return GetStopIndexingEvent((name_ + more).c_str(), create);
  }

  const test::TempFolder folder_;
  const std::string name_ = "a/b%1 " + folder_.Host().filename().string();
};

TEST_F(StopIndexingEventTest, TheIndexerSeesWhatAnotherSets) {
  EXPECT_EQ(Get(0), nullptr);
  const auto indexer = Get(1);
  ASSERT_NE(indexer, nullptr);
  EXPECT_FALSE(indexer->IsSet());
  EXPECT_EQ(Get(0, "x"), nullptr);
  const auto stopper = Get(0);
  ASSERT_NE(stopper, nullptr);
  EXPECT_EQ(stopper->Set(), 1);
  EXPECT_TRUE(indexer->IsSet());
  EXPECT_FALSE(stopper->IsSet()) << "who opened it may only set it";
  EXPECT_TRUE(indexer->IsSet()) << "it stays set";
}

TEST_F(StopIndexingEventTest, ItsSystemNameIsTheDatabasesWithStop) {
  platform::NamedEvent event;
  ASSERT_TRUE(event.Create(name_ + ":stop"));
  const auto stopper = Get(0);
  ASSERT_NE(stopper, nullptr);
  EXPECT_EQ(stopper->Set(), 1);
  EXPECT_TRUE(event.IsSet());
  EXPECT_EQ(Get(1, "\\b"), nullptr) << "a backslash is in no event's name";
}

TEST_F(StopIndexingEventTest, TwoCreatorsShareItAndTheNextOneBeginsAnew) {
  auto first = Get(1);
  auto second = Get(1);
  EXPECT_EQ(second->Set(), 1);
  EXPECT_TRUE(first->IsSet());
  first.reset();
  EXPECT_NE(Get(0), nullptr);
  second.reset();
  EXPECT_EQ(Get(0), nullptr);
  EXPECT_FALSE(Get(1)->IsSet());
}

}  // namespace
}  // namespace vemra
