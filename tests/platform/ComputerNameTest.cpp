#include "Support/platform/ComputerName.h"

#include <gtest/gtest.h>

namespace vemra::platform {
namespace {

TEST(ComputerNameTest, IsShortAndInCapitals) {
  std::string name;
  ASSERT_TRUE(GetThisComputerName(&name));
  EXPECT_GE(name.size(), 1U);
  EXPECT_LE(name.size(), 15U);
  EXPECT_EQ(name.find_first_of("abcdefghijklmnopqrstuvwxyz. "), std::string::npos);
}

TEST(ComputerNameTest, CanBeSetAndBeUnknown) {
  std::string name;
  {
    const SetComputerName computer("SERVER7");
    EXPECT_TRUE(GetThisComputerName(&name));
    EXPECT_EQ(name, "SERVER7");
  }
  {
    const SetComputerName computer("");
    EXPECT_FALSE(GetThisComputerName(&name));
  }
  std::string own;
  EXPECT_TRUE(GetThisComputerName(&name) && ReadComputerName(&own));
  EXPECT_EQ(name, own);
}

}  // namespace
}  // namespace vemra::platform
