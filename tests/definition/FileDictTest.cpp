#include "Support/definition/FileDict.h"

#include <gtest/gtest.h>

#include "tests/TempFolder.h"

namespace vemra {
namespace {

TEST(FileDictTest, WritesRecordsAndReadsThemBack) {
  test::TempFolder folder;
  const std::string longName(300, 'x');
  CTavoFileDict dict;
  EXPECT_EQ(dict.PutFileName(0, 0, "x"), 0) << "nothing is open";
  ASSERT_EQ(dict.Open(folder.Path("db.fin")), 1);
  ASSERT_EQ(dict.PutFileName(3, 258, "c:\\a.txt"), 1);
  ASSERT_EQ(dict.PutFileName(200, -2, longName), 1);
  std::string name = "old";
  EXPECT_EQ(dict.GetFileName(1, name), 0) << "open for writing";
  EXPECT_EQ(name, "old");

  dict.Open(folder.Path("db.fin"));
  int number = 0;
  ASSERT_EQ(dict.GetFileName(1, name, &number), 1);
  EXPECT_EQ(name, "c:\\a.txt");
  EXPECT_EQ(number, 258);
  ASSERT_EQ(dict.GetFileName(2, name), 1);
  EXPECT_EQ(name, longName.substr(0, 260));
  EXPECT_EQ(dict.GetFileType(1), 3);
  EXPECT_EQ(dict.GetFileType(2), 200 - 256) << "the byte is signed";
  EXPECT_EQ(dict.GetNumInText(2), -2);
  EXPECT_EQ(dict.PutFileName(0, 0, "x"), 0) << "open for reading";
  EXPECT_EQ(dict.GetFileName(2147483647, name), 0);
  EXPECT_EQ(dict.GetFileType(3), -1);
  EXPECT_EQ(dict.GetNumInText(0), -1);
  dict.Close();
  EXPECT_EQ(test::ReadHostFile(folder.Host() / "db.fin").size(), 526U);
  dict.Open(folder.Path("none.fin"));
  EXPECT_EQ(dict.GetFileType(1), -1);
}

}  // namespace
}  // namespace vemra
