#include "Support/foundation/INIException.h"

#include <gtest/gtest.h>

#include "Support/platform/Errors.h"

namespace vemra {
namespace {

TEST(INIExceptionTest, TakesTheLastErrorAlongAndKeepsItsTextToItself) {
  platform::SetLastErrorCode(32);
  const TavoINIException original("a.ini");
  platform::SetLastErrorCode(2);
  TavoINIException copy("b.ini");
  EXPECT_EQ(copy.errorCode, 2U);
  copy = original;
  EXPECT_EQ(copy.errorCode, 32U);
  EXPECT_EQ(copy.message, "a.ini");
  EXPECT_EQ(copy.GetMessage(), "No message for now");
}

}  // namespace
}  // namespace vemra
