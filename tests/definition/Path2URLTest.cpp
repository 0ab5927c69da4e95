#include "Support/definition/Path2URL.h"

#include <gtest/gtest.h>

#include "Support/foundation/INIWorker.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

TEST(Path2URLTest, TranslatesByTheOneCandidate) {
  TavoPath2URL map;
  EXPECT_EQ(map.TranslatePath("C:\\x"), "C:\\x") << "an empty map";
  EXPECT_EQ(map.IsUntranslated(), 1);
  map.Add("C:\\docs", "http://h/d");
  map.Add("c:\\A\\b", "http://h/ab");
  map.Add("C:\\a", "http://h/a");
  map.Add("C:\\DOCS", "http://h/second");
  map.Sort();
  const struct {
    const char* path;
    const char* url;
  } kRows[] = {
      {"c:\\Docs\\x\\y.htm", "http://h/second/x/y.htm"},  // the last of equal paths
      {"C:\\docs2\\a.htm", "http://h/second2/a.htm"},
      {"C:\\A", "http://h/a"},
      {"C:\\a\\a.htm", "http://h/a/a.htm"},
      {"C:\\a\\c", "C:\\a\\c"},  // C:\a\b stands between
      {"C:\\a\\B\\x", "http://h/ab/x"},
      {"B:\\x", "B:\\x"},
  };
  for (const auto& row : kRows) EXPECT_EQ(map.TranslatePath(row.path), row.url) << row.path;
}

TEST(Path2URLTest, LoadsCompletePairsOnly) {
  test::TempFolder folder;
  test::WriteHostFile(folder.Host() / "db.cfg",
                      "[Path2URL]\nCount=5\nPath1=C:\\b\nURL1=u1\nPath2=C:\\x\n"
                      "Path3=C:\\a\nURL3=\nPath4=\nURL4=u4\n");
  INIWorker worker(folder.Path("db.cfg"));
  TavoPath2URL map;
  map.Load(worker);
  ASSERT_EQ(map.GetCount(), 2);
  EXPECT_EQ(map.GetPath(1), "C:\\a");
  EXPECT_EQ(map.GetURL(1), "");
  map.Load(worker, 1);
  EXPECT_EQ(map.GetCount(), 4);
  map.Load(worker);
  map.Sort();

  INIWorker out(folder.Path("out.cfg"));
  ASSERT_EQ(map.Save(out), 1);
  EXPECT_EQ(test::ReadHostFile(folder.Host() / "out.cfg"),
            "[Path2URL]\r\nCount=2\r\nPath1=C:\\a\r\nURL1=\r\nPath2=C:\\b\r\nURL2=u1\r\n");
}

}  // namespace
}  // namespace vemra
