#include "Support/foundation/HostPath.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "Support/platform/Errors.h"
#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

struct Row {
  const char* path;
  const char* host;
};

// Every path below is of files that do not exist, so that only the text counts.
TEST(HostPathTest, TranslatesByText) {
  ::setenv("VEMRA_DRIVES", "C=/none/c;z=/wrong;\\\\Server\\share=/none/s;bad;D=", 1);
  const Row rows[] = {
      {"Z:\\none\\a.cfg", "/none/a.cfg"},
      {"z:\\", "/"},
      {"c:\\x\\y", "/none/c/x/y"},
      {"C:", "/none/c"},
      {"C:x", "/none/c/x"},
      {"C:\\x\\..\\..\\y", "/none/c/y"},
      {"D:\\x", ""},
      {"E:\\x", ""},
      {"\\\\server\\SHARE\\x", "/none/s/x"},
      {"//server/share/x", "/none/s/x"},
      {"\\\\server\\other\\x", ""},
      {"\\\\server", ""},
      {"\\none\\x", "/none/x"},
      {"none\\.\\x\\\\y\\", "none/x/y"},
      {"none\\..\\..\\x-y-z", "../x-y-z"},
      {"Z:none", "none"},
      {".", "."},
      {"", ""},
      {"Z:\\a:b", ""},
  };
  for (const Row& row : rows) EXPECT_EQ(ToHostPath(row.path), row.host) << row.path;
  ToHostPath("E:\\x");
  EXPECT_EQ(platform::GetLastErrorCode(), platform::kPathNotFound);
  ::unsetenv("VEMRA_DRIVES");
}

TEST(HostPathTest, TranslatesBack) {
  const Row rows[] = {
      {"Z:\\srv\\a b.cfg", "/srv/a b.cfg"},
      {"Z:\\", "/"},
      {"Z:\\a\\b\\", "//a///b/"},
      {"a\\b", "a/b"},
      {"", "/a\\b"},
      {"", "/a:b"},
  };
  for (const Row& row : rows) EXPECT_EQ(FromHostPath(row.host), row.path) << row.host;
}

TEST(HostPathTest, FindsTheExactNameFirstAndElseAnyCase) {
  const TempFolder folder;
  const std::string root = folder.Host().string();
  std::filesystem::create_directories(folder.Host() / "Sub");
  WriteHostFile(folder.Host() / "Sub" / "File.txt", "1");
  WriteHostFile(folder.Host() / "two", "1");
  WriteHostFile(folder.Host() / "Two", "2");
  EXPECT_EQ(ToHostPath(folder.Path("SUB\\fILE.TXT")), root + "/Sub/File.txt");
  EXPECT_EQ(ToHostPath(folder.Path("sub\\New.txt")), root + "/Sub/New.txt");
  EXPECT_EQ(ToHostPath(folder.Path("gone\\File.txt")), root + "/gone/File.txt");
  EXPECT_EQ(ToHostPath(folder.Path("two")), root + "/two");
  EXPECT_EQ(ToHostPath(folder.Path("TWO")), root + "/Two");
}

}  // namespace
}  // namespace vemra::test
