#include "Support/foundation/FolderPicker.h"

#include <gtest/gtest.h>

namespace vemra {
namespace {

TEST(FolderPickerTest, AsksThePickerThatWasSet) {
  std::string answer = "Z:\\chosen";
  SetFolderPicker([&answer](void*, const char* title, std::string& folder) {
    folder = answer;
    return std::string(title) == "Pick" ? 1 : 0;
  });
  char buffer[kFolderPathSize] = "old";
  EXPECT_EQ(BrowseForFolder(nullptr, buffer, "Cancel"), 0);
  EXPECT_STREQ(buffer, "old");
  EXPECT_NE(BrowseForFolder(nullptr, buffer, "Pick"), 0);
  EXPECT_STREQ(buffer, "Z:\\chosen");
  answer.assign(kFolderPathSize - 1, 'x');
  EXPECT_NE(BrowseForFolder(nullptr, buffer, "Pick"), 0);
  answer += 'x';
  EXPECT_EQ(BrowseForFolder(nullptr, buffer, "Pick"), 0);
  SetFolderPicker(nullptr);
}

}  // namespace
}  // namespace vemra
