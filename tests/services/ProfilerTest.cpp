#include "Support/services/Profiler.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Support/foundation/File.h"
#include "Support/platform/Clock.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

// In a current folder of its own.
class ProfilerTest : public testing::Test {
 protected:
  ProfilerTest() { std::filesystem::current_path(folder_.Host()); }
  ~ProfilerTest() override { std::filesystem::current_path(before_); }

  const std::filesystem::path before_ = std::filesystem::current_path();
  test::TempFolder folder_;
};

TEST_F(ProfilerTest, AppendsItsReport) {
  const platform::SetClock clock(0, 1000);
  CProfiler profiler(kProfilerFile);
  profiler.Start("Load");
  platform::SetClock::Advance(1234);
  EXPECT_EQ(profiler.Stop(), 1234);
  CProfiler copy = profiler;
  copy.Start(std::string(101, 'n').c_str());
  EXPECT_EQ(copy.Stop(), 0);
  profiler.Start();
  profiler.SetEnabled(0);
  EXPECT_EQ(profiler.Stop(), 0);
  profiler.SetEnabled(1);
  platform::SetClock::Advance(70);
  EXPECT_EQ(profiler.Stop(), 70);
  EXPECT_EQ(test::ReadHostFile("profiler.log"),
            "Load took 1.23 seconds.\r\n" + std::string(100, 'n') +
                " took 0.00 seconds.\r\nThe operation took 0.07 seconds.\r\n");
  const TavoFile holder("profiler.log", TavoFile::Access::kWrite, TavoFile::Creation::kOpenExisting,
                        TavoFile::Share::kDenyWrite);
  EXPECT_EQ(profiler.Stop(), 0);
}

TEST_F(ProfilerTest, TheStartIsSinglePrecision) {
  const struct {
    std::uint32_t start;
    std::uint32_t duration;
    std::int64_t measured;
  } kRows[] = {
      {(1U << 24) - 1, 1, 1},
      {(1U << 24) + 1, 2, 4},            // 2^24 and 2^24 + 4
      {4'000'000'000U, 1000, 1024},      // steps of 256
      {4'294'967'040U, 10'256, 10'240},  // over the tick count's wrap
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.start);
    const platform::SetClock clock(0, row.start);
    CProfiler profiler;
    profiler.Start("x");
    platform::SetClock::Advance(row.duration);
    EXPECT_EQ(profiler.Stop(), row.measured);
  }
  EXPECT_FALSE(std::filesystem::exists("profiler.log"));
}

}  // namespace
}  // namespace vemra
