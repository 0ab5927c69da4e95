#include "Support/platform/Clock.h"

#include <gtest/gtest.h>

#include "Support/foundation/DateTime.h"

namespace vemra::platform {
namespace {

TEST(ClockTest, ASetClockMovesOnlyBySleepingAndItsTickWraps) {
  const SetClock clock(1000, 0xFFFFFF00);
  EXPECT_EQ(DateTime::Now().GetSeconds(), 1000);
  SleepMilliseconds(999);
  EXPECT_EQ(GetWallSeconds(), 1000);
  SleepMilliseconds(1);
  EXPECT_EQ(GetWallSeconds(), 1001);
  EXPECT_EQ(GetTickMilliseconds(), 1000U - 0x100U);
  EXPECT_EQ(SetClock::GetElapsedMilliseconds(), 1000U);
}

TEST(ClockTest, TheRealClockIsBackAfterwards) {
  { const SetClock clock(0); }
  EXPECT_GT(GetWallSeconds(), 1700000000);
}

}  // namespace
}  // namespace vemra::platform
