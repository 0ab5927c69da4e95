#include <gtest/gtest.h>

#include "tests/TempFolder.h"
#include "tests/exchange/Rewrite.h"

namespace vemra {
namespace {

// Files written by hand in exactly the form that saving gives.
TEST(GoldenTest, EveryFileIsWrittenAsItWasRead) {
  const test::TempFolder folder;
  const std::filesystem::path golden = VEMRA_TEST_DATA "/definition";
  std::filesystem::create_directory(folder.Host() / "out");
  std::filesystem::copy(golden, folder.Host());
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(golden)) {
    const std::string name = entry.path().filename().string();
    SCOPED_TRACE(name);
    ASSERT_TRUE(test::RewriteDefinition(folder.Path(name), folder.Path("out\\" + name)));
    EXPECT_EQ(test::ReadHostFile(folder.Host() / "out" / name), test::ReadHostFile(entry.path()));
    ++files;
  }
  EXPECT_GE(files, 12);
}

}  // namespace
}  // namespace vemra
