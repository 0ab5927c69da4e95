#include "Support/foundation/Paths.h"

#include <gtest/gtest.h>

#include "Support/platform/Files.h"
#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

TEST(PathsTest, TellsAbsolutePaths) {
  for (const char* path : {"C:", "z:x", "\\\\", "\\\\server"}) EXPECT_TRUE(IsAbsolutePath(path));
  for (const char* path : {"", "\\dir", "dir", "1:", "\xC4:", "C"}) {
    EXPECT_FALSE(IsAbsolutePath(path)) << path;
  }
}

struct Row {
  const char* first;
  const char* second;
  const char* result;
};

TEST(PathsTest, Connects) {
  const Row rows[] = {
      {"C:\\a\\b", "c\\d.txt", "C:\\a\\b\\c\\d.txt"},
      {"C:\\a\\b\\", "c\\", "C:\\a\\b\\c\\"},
      {"C:\\a\\b", "..\\x", "C:\\a\\x"},
      {"C:\\a\\b", "...\\x", "C:\\a\\x"},
      {"C:\\a\\b", "..\\..\\x", "C:\\x"},
      {"C:\\a\\b", "..\\..\\..\\x", ""},
      {"C:\\a\\b", ".\\x", "C:\\a\\b\\x"},
      {"C:\\a\\b", ".y\\x", ""},
      {"C:\\a\\b", "..y\\x", ""},
      {"C:\\a\\b", "a\\\\x", ""},
      {"C:\\a\\b", "c\\..", "C:\\a\\b\\c\\.."},
      {"C:\\a\\b", "D:\\x", "D:\\x"},
      {"C:\\a\\b", "\\\\s\\x", "\\\\s\\x"},
      {"C:\\a\\b", "", ""},
      {"C:\\x", "\\dir", "C\\dir"},
      {"\\\\s\\x", "\\dir", "\\dir"},
      {"", "a\\b", "a\\b"},
      {"", "..\\b", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ConnectPaths(row.first, row.second), row.result) << row.first << ", " << row.second;
  }
}

TEST(PathsTest, MakesRelative) {
  const Row rows[] = {
      {"C:\\a\\b\\f.txt", "C:\\a\\b", "f.txt"},
      {"c:\\A\\x", "C:\\a\\b\\c", "...\\x"},
      {"C:\\a\\x", "C:\\a\\b", "..\\x"},
      {"C:\\x", "C:\\a\\b\\c", "....\\x"},
      {"C:\\a\\bc\\x", "C:\\a\\b", "..\\bc\\x"},
      {"D:\\x", "C:\\a", "D:\\x"},
      {"C:\\a\\", "C:\\a\\b", ""},
      {"C:", "C:\\a", ""},
      {"C:x", "C:", ".\\x"},
      {"C:\\x", "C:", "x"},
      {"\\\\s\\a\\x", "\\\\S\\b", "..\\a\\x"},
      {"x", "C:\\a", "x"},
      {"C:\\\xC4\\x", "C:\\\xE4", "..\\\xC4\\x"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MakeRelativePath(row.first, row.second), row.result)
        << row.first << ", " << row.second;
  }
}

TEST(PathsTest, CreatesEveryMissingFolder) {
  const TempFolder folder;
  EXPECT_EQ(CreatePath(folder.Path("a\\b\\file.txt"), 1), 1);
  EXPECT_TRUE(platform::FolderExists(folder.Path("a\\b")));
  EXPECT_FALSE(platform::FolderExists(folder.Path("a\\b\\file.txt")));
  EXPECT_EQ(CreatePath(folder.Path("a\\b\\c"), 0), 1);
  EXPECT_TRUE(platform::FolderExists(folder.Path("a\\b\\c")));
  EXPECT_EQ(CreatePath(folder.Path("a\\b\\c\\"), 0), 1);

  WriteHostFile(folder.Host() / "file", "x");
  EXPECT_EQ(CreatePath(folder.Path("file\\x"), 1), 0);
  EXPECT_EQ(CreatePath("Q:\\x\\y", 1), 0);
  EXPECT_EQ(CreatePath("\\\\no-such-server\\share\\x", 1), 0);
  EXPECT_EQ(CreatePath("", 0), 0);
  EXPECT_EQ(CreatePath("", 1), 1);
}

TEST(PathsTest, ReplacesTheFolder) {
  const Row rows[] = {
      {"C:\\a\\f", "D:\\b", "D:\\b\\f"},
      {"C:name", "D:\\b", "D:\\bC:name"},
      {"C:\\a\\", "D:\\b", "D:\\b\\"},
      {"", "D:", "D:"},
  };
  for (const Row& row : rows) {
    std::string out = row.first;
    ReplaceDir(out, row.second, out);
    EXPECT_EQ(out, row.result);
  }
}

TEST(PathsTest, TheProgramsFolderExists) {
  EXPECT_TRUE(platform::FolderExists(GetAppDirectory()));
  EXPECT_NE(GetAppDirectory().back(), '\\');
}

}  // namespace
}  // namespace vemra::test
