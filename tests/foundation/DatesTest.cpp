#include "Support/foundation/Dates.h"

#include <gtest/gtest.h>

namespace vemra {
namespace {

TEST(DatesTest, PrintsLocalTime) {
  std::string text;
  const DateTime time = DateTime::FromLocal({2024, 3, 5, 9, 7, 59});
  GetDateString(time, text);
  EXPECT_EQ(text, "03/05/2024");
  GetDateTimeString(time, text);
  EXPECT_EQ(text, "03/05/2024  09:07");
}

TEST(DatesTest, LocalTimeComesBackAndRunsOver) {
  const LocalTime local = DateTime::FromLocal({2023, 12, 32, 0, 0, 0}).GetLocal();
  EXPECT_EQ(local.year, 2024);
  EXPECT_EQ(local.month, 1);
  EXPECT_EQ(local.day, 1);
  EXPECT_EQ(local.weekday, 1);  // a Monday
  EXPECT_EQ(DateTime::FromLocal({2024, 3, 10, 12, 0, 0}).GetLocal().weekday, 7);
}

}  // namespace
}  // namespace vemra
