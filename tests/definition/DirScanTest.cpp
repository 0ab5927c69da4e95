#include "Support/definition/DirScan.h"

#include <gtest/gtest.h>

#include <set>

#include "Support/definition/Directories.h"
#include "tests/HandleLimit.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

namespace fs = std::filesystem;
using Paths = std::multiset<std::string>;

class DirScanTest : public ::testing::Test {
 protected:
  void Put(const std::string& name) {
    fs::create_directories((folder_.Host() / name).parent_path());
    test::WriteHostFile(folder_.Host() / name, name);
  }
  // The found paths below the folder.
  Paths Find(const std::string& root, const std::string& filters, int subfolders) {
    Paths paths;
    std::string path;
    scan_.Scan(root, filters, subfolders);
    while (scan_.FindNextFile(path) != 0) {
      paths.insert(path.substr(std::min(folder_.Path().size() + 1, path.size())));
    }
    return paths;
  }
  Paths Left() const {
    Paths left;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Host())) {
      left.insert(fs::relative(entry.path(), folder_.Host()).generic_string());
    }
    return left;
  }

  test::TempFolder folder_;
  CDirScan scan_;
};

TEST_F(DirScanTest, FindsMatchingFiles) {
  for (const char* name : {"Index.htm", "a.HTML", "b.txt", "sub/c.htm", "sub/deep/d.txt"}) {
    Put(name);
  }
  const struct {
    const char* filters;
    int subfolders;
    Paths found;
  } kRows[] = {
      {"", 0, {"Index.htm", "a.HTML", "b.txt"}},
      {"*.HTM", 0, {"Index.htm"}},
      {"*.htm;*.html", 1, {"Index.htm", "a.HTML", "sub\\c.htm"}},
      {";*.txt,,", 1, {"b.txt", "sub\\deep\\d.txt"}},
      {"none", 1, {}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.filters);
    EXPECT_EQ(Find(folder_.Path(), row.filters, row.subfolders), row.found);
    EXPECT_EQ(Find(folder_.Path() + "\\", row.filters, row.subfolders), row.found);
  }
  EXPECT_EQ(scan_.GetLastError(), 0U);
  std::string path;
  EXPECT_EQ(scan_.FindNextFile(path), 0) << "the end is the end";
  EXPECT_EQ(Find(folder_.Path("none"), "", 1), Paths());
  EXPECT_NE(scan_.GetLastError(), 0U);
}

TEST_F(DirScanTest, ASubfolderThatCannotBeReadLeavesItsError) {
  if (!test::HandleLimit::Works()) GTEST_SKIP() << "every folder can be read here";
  Put("file");
  Put("sub/hidden");
  {
    const test::HandleLimit limit(1);
    EXPECT_EQ(Find(folder_.Path(), "", 1), Paths{"file"});
  }
  EXPECT_EQ(scan_.GetLastError(), 4U) << "too many open files";
}

TEST_F(DirScanTest, DeepTreesNeedNoHandleForEachLevel) {
  // Deeper than the walk keeps listings open, so that it goes on from those that it has closed.
  fs::path deep = folder_.Host();
  Paths expected;
  std::string shown;
  for (int level = 0; level < 100; ++level) {
    deep /= "d";
    fs::create_directory(deep);
    shown += "d\\";
    for (const char* name : {"1", "2"}) {
      test::WriteHostFile(deep / name, "x");
      expected.insert(shown + name);
    }
  }
  {
    const test::HandleLimit limit(50);
    EXPECT_EQ(Find(folder_.Path(), "", 1), expected);
  }
  CleanDirectory(folder_.Path(), 0);
  EXPECT_TRUE(fs::is_empty(folder_.Host()));
}

TEST_F(DirScanTest, LinksThatFormALoopEnd) {
  Put("a/file");
  Put("outside/kept");
  std::error_code error;
  fs::create_directory_symlink(folder_.Host(), folder_.Host() / "a" / "up", error);
  if (error) GTEST_SKIP() << "links cannot be made here";
  fs::create_directory_symlink(folder_.Host() / "outside", folder_.Host() / "a" / "link");
  EXPECT_EQ(Find(folder_.Path(), "", 1), (Paths{"a\\file", "a\\link\\kept", "outside\\kept"}));

  CleanDirectory(folder_.Path("a"), 1);
  EXPECT_EQ(Left(), (Paths{"outside", "outside/kept"})) << "links are removed, not followed";
}

TEST_F(DirScanTest, WhatVanishesMeanwhileIsNoError) {
  for (const char* name : {"r/1", "r/2", "r/3", "r/sub/4"}) Put(name);
  std::string path;
  scan_.Scan(folder_.Path("r"), "", 1);
  ASSERT_EQ(scan_.FindNextFile(path), 1);
  // Not the folder itself, which Windows keeps while it is listed.
  for (const auto& entry : fs::directory_iterator(folder_.Host() / "r")) {
    fs::remove_all(entry.path());
  }
  scan_.DeleteSubtree(1);
  EXPECT_EQ(scan_.GetLastError(), 0U);
}

TEST_F(DirScanTest, DeletesWhatMatches) {
  for (const char* name : {"r/a.tmp", "r/sub/b.tmp", "r/sub/c.txt", "r/only/d.tmp"}) Put(name);
  scan_.Scan(folder_.Path("r"), "*.tmp", 1);
  scan_.DeleteSubtree(1);
  EXPECT_EQ(Left(), (Paths{"r", "r/sub", "r/sub/c.txt"}));
  EXPECT_NE(scan_.GetLastError(), 0U) << "a folder that is not empty stays";
  CleanDirectory(folder_.Path("r"), 0);
  EXPECT_EQ(Left(), Paths{"r"});
}

TEST_F(DirScanTest, CopiesTheFilesWithADotInTheirName) {
  for (const char* name : {"from/a.x", "from/b.y", "from/nodot", "from/sub/c.x", "to/a.x"}) {
    Put(name);
  }
  EXPECT_EQ(CopyAllFiles(folder_.Path("from"), folder_.Path("to\\new")), 1);
  EXPECT_EQ(CopyAllFiles(folder_.Path("from"), folder_.Path("to")), 1);
  EXPECT_EQ(test::ReadHostFile(folder_.Host() / "to" / "a.x"), "from/a.x") << "overwritten";
  EXPECT_TRUE(fs::exists(folder_.Host() / "to" / "new" / "b.y"));
  EXPECT_FALSE(fs::exists(folder_.Host() / "to" / "nodot"));

  EXPECT_EQ(CopyAllFiles(folder_.Path("from"), folder_.Path("from")), 0) << "onto themselves";
  EXPECT_EQ(test::ReadHostFile(folder_.Host() / "from" / "a.x"), "from/a.x");
  EXPECT_EQ(CopyAllFiles(folder_.Path("from\\none"), folder_.Path("to\\a.x\\y")), 1);
  fs::create_directory(folder_.Host() / "blocked");
  fs::create_directory(folder_.Host() / "blocked" / "a.x");
  EXPECT_EQ(CopyAllFiles(folder_.Path("from"), folder_.Path("blocked")), 0);
  EXPECT_TRUE(fs::exists(folder_.Host() / "blocked" / "b.y")) << "the others are copied";
}

}  // namespace
}  // namespace vemra
