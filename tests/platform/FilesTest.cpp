#include "Support/platform/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "Support/foundation/File.h"
#include "Support/platform/Errors.h"
#include "Support/platform/FolderListing.h"
#include "Support/platform/Process.h"
#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

// 0, or why it failed.
std::uint32_t ErrorOf(bool succeeded) {
  return succeeded ? 0 : platform::GetLastErrorCode();
}

TEST(FilesTest, TellsFilesFoldersAndWhatIsMissing) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "file", "x");
  EXPECT_TRUE(platform::FileExists(folder.Path("file")));
  EXPECT_FALSE(platform::FolderExists(folder.Path("file")));
  EXPECT_FALSE(platform::FileExists(folder.Path()));
  EXPECT_TRUE(platform::FolderExists(folder.Path() + "\\"));
  EXPECT_EQ(ErrorOf(platform::FileExists(folder.Path("none"))), platform::kFileNotFound);
  EXPECT_EQ(ErrorOf(platform::FileExists(folder.Path("none\\none"))), platform::kPathNotFound);
}

TEST(FilesTest, ReportsWhyAFolderOrFileCannotBeMadeOrRemoved) {
  const TempFolder folder;
  const std::string sub = folder.Path("sub");
  EXPECT_TRUE(platform::MakeFolder(sub));
  EXPECT_EQ(ErrorOf(platform::MakeFolder(sub)), platform::kAlreadyExists);
  EXPECT_EQ(ErrorOf(platform::MakeFolder(folder.Path("none\\sub"))), platform::kPathNotFound);
  WriteHostFile(folder.Host() / "sub" / "file", "x");
  EXPECT_EQ(ErrorOf(platform::RemoveFolder(sub)), 145U);  // not empty
  EXPECT_EQ(ErrorOf(platform::RemoveFile(sub)), platform::kAccessDenied);
  {
    const TavoFile holder(sub + "\\file", TavoFile::Access::kRead,
                          TavoFile::Creation::kOpenExisting);
    EXPECT_EQ(ErrorOf(platform::RemoveFile(sub + "\\file")), platform::kSharingViolation);
  }
  EXPECT_TRUE(platform::RemoveFile(sub + "\\file"));
  EXPECT_TRUE(platform::RemoveFolder(sub));
}

TEST(FilesTest, CopiesOverATargetButNeverOntoItself) {
  const TempFolder folder;
  const std::string bytes(300 * 1024, '\x80');
  const auto copy = [&](const char* from, const char* to) {
    return ErrorOf(platform::CopyFileOver(folder.Path(from), folder.Path(to)));
  };
  WriteHostFile(folder.Host() / "from", bytes);
  WriteHostFile(folder.Host() / "to", std::string(400 * 1024, 'x'));
  EXPECT_EQ(copy("from", "to"), 0U);
  EXPECT_EQ(ReadHostFile(folder.Host() / "to"), bytes);
  EXPECT_EQ(copy("from", "FROM"), platform::kSharingViolation);
  EXPECT_EQ(ReadHostFile(folder.Host() / "from"), bytes);
  EXPECT_EQ(copy("none", "new"), platform::kFileNotFound);
  EXPECT_FALSE(platform::FileExists(folder.Path("new")));
}

TEST(FilesTest, AStampChangesWhenAFileIsWrittenOrReplaced) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "a", "1");
  WriteHostFile(folder.Host() / "b", "1");
  platform::FileStamp stamps[3];
  ASSERT_TRUE(platform::GetFileStamp(folder.Path("a"), &stamps[0]));
  ASSERT_TRUE(platform::GetFileStamp(folder.Path("A"), &stamps[1]));
  EXPECT_EQ(stamps[0], stamps[1]);
  std::filesystem::rename(folder.Host() / "b", folder.Host() / "a");
  ASSERT_TRUE(platform::GetFileStamp(folder.Path("a"), &stamps[2]));
  EXPECT_NE(stamps[0], stamps[2]);
}

std::vector<std::string> List(const std::string& path) {
  platform::FolderListing listing;
  std::vector<std::string> names;
  platform::FolderEntry entry;
  if (!listing.Open(path)) return {"error " + std::to_string(platform::GetLastErrorCode())};
  while (listing.Next(&entry)) names.push_back(entry.name + (entry.isFolder ? "\\" : ""));
  EXPECT_EQ(platform::GetLastErrorCode(), platform::kNoMoreFiles);
  std::sort(names.begin(), names.end());
  return names;
}

TEST(FolderListingTest, ListsWhatTheWindowsFormCanSay) {
  const TempFolder folder;
  const bool hostIsWindows = folder.Host().string()[0] != '/';
  WriteHostFile(folder.Host() / "file.txt", "");
  WriteHostFile(folder.Host() / "..x", "");
  std::filesystem::create_directory(folder.Host() / "sub");
  if (!hostIsWindows) WriteHostFile(folder.Host() / "a:b", "");
  if (!hostIsWindows) WriteHostFile(folder.Host() / "a\\b", "");
  EXPECT_EQ(List(folder.Path()), (std::vector<std::string>{"..x", "file.txt", "sub\\"}));
  EXPECT_EQ(List(folder.Path("sub")), std::vector<std::string>{});
  EXPECT_EQ(List(folder.Path("none")), std::vector<std::string>{"error 3"});
  platform::FolderListing ofAFile;
  EXPECT_FALSE(ofAFile.Open(folder.Path("file.txt")));
}

TEST(FolderListingTest, AnIdentityShowsThatALinkLeadsBack) {
  const TempFolder folder;
  std::error_code error;
  std::filesystem::create_directory_symlink(folder.Host(), folder.Host() / "loop", error);
  if (error) GTEST_SKIP() << "no links here";
  platform::FolderListing outer;
  platform::FolderListing inner;
  platform::FolderEntry entry;
  ASSERT_TRUE(outer.Open(folder.Path()));
  ASSERT_TRUE(inner.Open(folder.Path("loop")));
  EXPECT_EQ(outer.GetIdentity(), inner.GetIdentity());
  ASSERT_TRUE(outer.Next(&entry));
  EXPECT_TRUE(entry.isFolder);
  EXPECT_TRUE(entry.isLink);
}

TEST(ProcessTest, PathsAreInTheWindowsFormAndExist) {
  EXPECT_TRUE(platform::FileExists(platform::GetProgramFileName()));
  EXPECT_TRUE(platform::FolderExists(platform::GetCurrentFolder()));
  EXPECT_TRUE(platform::FolderExists(platform::GetTempFolder()));
  EXPECT_EQ(platform::GetTempFolder().back(), '\\');
  EXPECT_EQ(platform::GetCurrentFolder()[1], ':');
}

}  // namespace
}  // namespace vemra::test
