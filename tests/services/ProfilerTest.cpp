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
  std::string Report() const { return test::ReadHostFile(folder_.Host() / "profiler.log"); }

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
  platform::SetClock::Advance(6);
  EXPECT_EQ(copy.Stop(), 1240);
  copy.Start(std::string(101, 'n').c_str());
  EXPECT_EQ(copy.Stop(), 0);
  profiler.Start();
  profiler.SetEnabled(0);
  platform::SetClock::Advance(70);
  EXPECT_EQ(profiler.Stop(), 70);
  profiler.SetEnabled(1);
  EXPECT_EQ(profiler.Stop(), 70);
  EXPECT_EQ(Report(), "Load took 1.23 seconds.\r\nLoad took 1.24 seconds.\r\n" +
                          std::string(100, 'n') +
                          " took 0.00 seconds.\r\nThe operation took 0.07 seconds.\r\n");
}

TEST_F(ProfilerTest, ReportsToTheDebuggerOnlyUnlessAsked) {
  const platform::SetClock clock(0);
  CProfiler profiler;
  profiler.Start("x");
  platform::SetClock::Advance(5);
  EXPECT_EQ(profiler.Stop(), 5);
  EXPECT_FALSE(std::filesystem::exists("profiler.log"));
}

TEST_F(ProfilerTest, ADeniedFileGivesZero) {
  const platform::SetClock clock(0);
  CProfiler profiler(kProfilerFile);
  profiler.Start("x");
  platform::SetClock::Advance(5);
  const TavoFile holder(folder_.Path("profiler.log"), TavoFile::Access::kWrite,
                        TavoFile::Creation::kOpenOrCreate, TavoFile::Share::kDenyWrite);
  EXPECT_EQ(profiler.Stop(), 0);
}

TEST_F(ProfilerTest, TheStartIsSinglePrecision) {
  const struct {
    std::uint32_t start;
    std::uint32_t duration;
    std::int64_t measured;
  } kRows[] = {
      {(1U << 24) - 1, 1, 1},       {(1U << 24) + 1, 0, 0},  // both ends are rounded alike, to 2^24
      {(1U << 24) + 1, 2, 4},                                // 2^24 + 3 is rounded up
      {4'000'000'000U, 100, 0},                              // steps of 256
      {4'000'000'000U, 1000, 1024}, {4'294'967'040U, 10'256, 10'240},  // over the tick count's wrap
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(&row - kRows);
    const platform::SetClock clock(0, row.start);
    CProfiler profiler;
    profiler.Start("x");
    platform::SetClock::Advance(row.duration);
    EXPECT_EQ(profiler.Stop(), row.measured);
  }
}

}  // namespace
}  // namespace vemra
