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

}  // namespace
}  // namespace vemra
