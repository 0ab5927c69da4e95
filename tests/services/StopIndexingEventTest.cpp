#include "Support/services/StopIndexingEvent.h"

#include <gtest/gtest.h>

#include "Support/platform/NamedEvent.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

// A database name that no other test has: events belong to the whole computer.
std::string UniqueName(const test::TempFolder& folder) {
  return "a/b%1 " + folder.Host().filename().string();
}

TEST(StopIndexingEventTest, TheIndexerSeesWhatAnotherSets) {
  const test::TempFolder folder;
  const std::string name = UniqueName(folder);
  EXPECT_EQ(GetStopIndexingEvent(name.c_str(), 0), nullptr);
  const auto indexer = GetStopIndexingEvent(name.c_str(), 1);
  ASSERT_NE(indexer, nullptr);
  EXPECT_FALSE(indexer->IsSet());
  EXPECT_EQ(GetStopIndexingEvent((name + "x").c_str(), 0), nullptr);
  const auto stopper = GetStopIndexingEvent(name.c_str(), 0);
  ASSERT_NE(stopper, nullptr);
  EXPECT_EQ(stopper->Set(), 1);
  EXPECT_TRUE(indexer->IsSet());
  EXPECT_FALSE(stopper->IsSet()) << "who opened it may only set it";
  EXPECT_TRUE(indexer->IsSet()) << "it stays set";
}

TEST(StopIndexingEventTest, ItsSystemNameIsTheDatabasesWithStop) {
  const test::TempFolder folder;
  const std::string name = UniqueName(folder);
  platform::NamedEvent event;
  ASSERT_TRUE(event.Create(name + ":stop"));
  const auto stopper = GetStopIndexingEvent(name.c_str(), 0);
  ASSERT_NE(stopper, nullptr);
  EXPECT_EQ(stopper->Set(), 1);
  EXPECT_TRUE(event.IsSet());
}

TEST(StopIndexingEventTest, TwoCreatorsShareItAndTheNextOneBeginsAnew) {
  const test::TempFolder folder;
  const std::string name = UniqueName(folder);
  auto first = GetStopIndexingEvent(name.c_str(), 1);
  auto second = GetStopIndexingEvent(name.c_str(), 1);
  EXPECT_EQ(second->Set(), 1);
  EXPECT_TRUE(first->IsSet());
  first.reset();
  EXPECT_NE(GetStopIndexingEvent(name.c_str(), 0), nullptr);
  second.reset();
  EXPECT_EQ(GetStopIndexingEvent(name.c_str(), 0), nullptr);
  EXPECT_FALSE(GetStopIndexingEvent(name.c_str(), 1)->IsSet());
}

TEST(StopIndexingEventTest, ABackslashIsNoNameOfAnEvent) {
  EXPECT_EQ(GetStopIndexingEvent("a\\b", 1), nullptr);
}

}  // namespace
}  // namespace vemra
