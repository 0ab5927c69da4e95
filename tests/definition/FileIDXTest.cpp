#include "Support/definition/FileIDX.h"

#include <gtest/gtest.h>

#include <set>

#include "Support/foundation/INIWorker.h"
#include "Support/foundation/ProfileReader.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

TEST(FileIDXitemTest, ReadsAndWritesLines) {
  const struct {
    const char* line;
    const char* name;
    const char* filters;
    int type;
    int subfolders;
    const char* written;  // null when it is the line itself
  } kRows[] = {
      {"D,c:\\docs,S,*.htm;*.html", "c:\\docs", "*.htm;*.html", 1, 1, nullptr},
      {"D,c:\\docs,S", "c:\\docs", "", 1, 1, nullptr},
      {"D,c:\\notes", "c:\\notes", "", 1, 0, nullptr},
      {"D,\"c:\\a,b\",,*.htm", "c:\\a,b", "*.htm", 1, 0, nullptr},
      {"D,c:\\docs,,S*.htm", "c:\\docs", "S*.htm", 1, 0, nullptr},
      {"D,c:\\docs,*.htm", "c:\\docs", "*.htm", 1, 0, "D,c:\\docs,,*.htm"},
      {"F,\"c:\\a, b.txt\"", "c:\\a, b.txt", "", 0, 0, nullptr},
      {"F,c:\\a.txt,S,*.x", "c:\\a.txt", "", 0, 0, "F,c:\\a.txt"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.line);
    CTavoFileIDXitem item;
    ASSERT_EQ(item.Read(row.line), 1);
    EXPECT_EQ(item.GetType(), row.type);
    EXPECT_EQ(item.GetName(), row.name);
    EXPECT_EQ(item.GetIncludeSubfolders(), row.subfolders);
    EXPECT_EQ(item.GetFilters(), row.filters);
    std::string written;
    item.Write(written);
    EXPECT_EQ(written, row.written == nullptr ? row.line : row.written);
  }
  for (const char* line : {"", "D", "D,", "D;x", "X,c:\\docs", "d,c:\\docs", "D,\"open", ",x"}) {
    EXPECT_EQ(CTavoFileIDXitem().Read(line), 0) << line;
  }
}

class FileIDXTest : public ::testing::Test {
 protected:
  int Load(const std::string& text) {
    test::WriteHostFile(folder_.Host() / "db.idx", text);
    return list_.Load(folder_.Path("db.idx"));
  }

  test::TempFolder folder_;
  CTavoFileIDX list_;
};

TEST_F(FileIDXTest, ReadsTheGoldenFile) {
  ASSERT_EQ(Load(test::ReadHostFile(VEMRA_TEST_DATA "/definition/list.idx")), 1);
  ASSERT_EQ(list_.GetNumOfFileTypes(), 3);
  EXPECT_EQ(list_.GetCurrentIndex(), 0);
  EXPECT_EQ(list_.GetFilters(), "*.txt;*.log");
  EXPECT_EQ(list_.GetNumOfIDXitems(), 3);
  EXPECT_EQ(list_.GetFileType(1)->GetNumOfIDXitems(), 0);
  EXPECT_EQ(list_.Load(folder_.Path("none.idx")), 0);
  EXPECT_EQ(list_.Save(folder_.Path("none\\out.idx")), 0);
  EXPECT_EQ(list_.Save(static_cast<std::FILE*>(nullptr)), 0);
}

TEST_F(FileIDXTest, FindsSectionsWhereverTheyStand) {
  // The second HTML section, the items before "Files to Index" and what is no item are left out.
  ASSERT_EQ(Load("[HTML]\nF,early\n[Files to Index]\n[Text]\nF,t\nnonsense\n[Other]\nF,o\n"
                 "[HTML]  \r\nF,h1\r\n;F,comment\r\n[HTML]\nF,h2\n"
                 "[File Type List]\nnoise\nFile Types=9\nHTML,*.htm\nText\nHTML,*.html\n,x\n"),
            1);
  ASSERT_EQ(list_.GetNumOfFileTypes(), 2);
  EXPECT_EQ(list_.GetFileType(0)->GetDefaultFilters(), "*.html") << "a known name is updated";
  ASSERT_EQ(list_.GetFileType(0)->GetNumOfIDXitems(), 1);
  EXPECT_EQ(list_.GetFileType(0)->GetIDXitem(0)->GetName(), "h1");
  EXPECT_EQ(list_.GetFileType(1)->GetNumOfIDXitems(), 1);

  CTavoProfileReader reader(folder_.Path("db.idx"));
  CTavoFileIDX inOnePass;
  EXPECT_EQ(inOnePass.Load(reader), 1);
  EXPECT_EQ(inOnePass.GetNumOfFileTypes(), 2);
  CTavoProfileReader closed;
  EXPECT_EQ(inOnePass.Load(closed), 0);
}

TEST_F(FileIDXTest, KeepsTheCurrentFileType) {
  for (const char* name : {"a", "b", "c"}) {
    list_.AddFileType(std::make_unique<CTavoFileType>(name));
  }
  EXPECT_EQ(list_.GetCurrentIndex(), 0) << "the first one added";
  list_.SetCurrentFileType(2);
  EXPECT_EQ(list_.RemoveFileType(0), 1);
  EXPECT_EQ(list_.GetCurrentIndex(), 1);
  EXPECT_EQ(list_.GetFileType()->GetName(), "c");
  EXPECT_EQ(list_.RemoveFileType(1), 1);
  EXPECT_EQ(list_.GetFileType(), nullptr);
  EXPECT_EQ(list_.GetFilters(), "");
}

TEST_F(FileIDXTest, StoringFileTypesKeepsTheSection) {
  list_.AddFileType(std::make_unique<CTavoFileType>("Plain Text"));
  INIWorker worker(folder_.Path("db.cfg"));
  worker.SetSection("General Definitions");
  ASSERT_EQ(list_.SaveFileTypes(worker), 1);
  CTavoFileIDX loaded;
  ASSERT_EQ(loaded.LoadFileTypes(worker), 1);
  EXPECT_EQ(loaded.GetFileType()->GetName(), "Plain Text");
  EXPECT_EQ(worker.section, "General Definitions");
}

TEST_F(FileIDXTest, EnumeratesTheFilesOfItsItems) {
  for (const char* name : {"a.txt", "b.htm", "c.TXT"}) {
    test::WriteHostFile(folder_.Host() / name, "x");
  }
  CTavoFileType fileType("Text", "*.txt");
  fileType.AddIDXitem(CTavoFileIDXitem::kFile, "single.xyz");
  fileType.AddIDXitem(CTavoFileIDXitem::kFolder, folder_.Path("none"));
  fileType.AddIDXitem(CTavoFileIDXitem::kFolder, folder_.Path());
  fileType.AddIDXitem(CTavoFileIDXitem::kFolder, folder_.Path(), 0, "*.HTM");
  std::multiset<std::string> paths;
  std::string path;
  POSITION position = fileType.GetStartPosition();
  while (fileType.GetNextFilePath(position, path) != 0) paths.insert(path);
  EXPECT_EQ(position, 0U);
  EXPECT_EQ(paths, (std::multiset<std::string>{"single.xyz", folder_.Path("a.txt"),
                                               folder_.Path("b.htm"), folder_.Path("c.TXT")}));
  position = fileType.GetStartPosition();
  ASSERT_EQ(fileType.GetNextFilePath(position, path), 1);
  CTavoFileType::CloseScan(position);
  EXPECT_EQ(position, 0U);
}

}  // namespace
}  // namespace vemra
