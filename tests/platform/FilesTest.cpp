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

using platform::GetLastErrorCode;

TEST(FilesTest, TellsFilesFoldersAndWhatIsMissing) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "file", "x");
  EXPECT_TRUE(platform::FileExists(folder.Path("file")));
  EXPECT_FALSE(platform::FolderExists(folder.Path("file")));
  EXPECT_FALSE(platform::FileExists(folder.Path()));
  EXPECT_TRUE(platform::FolderExists(folder.Path() + "\\"));
  EXPECT_FALSE(platform::FileExists(folder.Path("none")));
  EXPECT_EQ(GetLastErrorCode(), platform::kFileNotFound);
  EXPECT_FALSE(platform::FileExists(folder.Path("none\\none")));
  EXPECT_EQ(GetLastErrorCode(), platform::kPathNotFound);
}

TEST(FilesTest, ReportsWhyAFolderOrFileCannotBeMadeOrRemoved) {
  const TempFolder folder;
  EXPECT_TRUE(platform::MakeFolder(folder.Path("sub")));
  EXPECT_FALSE(platform::MakeFolder(folder.Path("sub")));
  EXPECT_EQ(GetLastErrorCode(), platform::kAlreadyExists);
  EXPECT_FALSE(platform::MakeFolder(folder.Path("none\\sub")));
  EXPECT_EQ(GetLastErrorCode(), platform::kPathNotFound);
  WriteHostFile(folder.Host() / "sub" / "file", "x");
  EXPECT_FALSE(platform::RemoveFolder(folder.Path("sub")));
  EXPECT_EQ(GetLastErrorCode(), 145U);  // not empty
  EXPECT_FALSE(platform::RemoveFile(folder.Path("sub")));
  EXPECT_EQ(GetLastErrorCode(), platform::kAccessDenied);
  {
    const TavoFile holder(folder.Path("sub\\file"), TavoFile::Access::kRead,
                          TavoFile::Creation::kOpenExisting);
    EXPECT_FALSE(platform::RemoveFile(folder.Path("sub\\file")));
    EXPECT_EQ(GetLastErrorCode(), platform::kSharingViolation);
  }
  EXPECT_TRUE(platform::RemoveFile(folder.Path("sub\\file")));
  EXPECT_TRUE(platform::RemoveFolder(folder.Path("sub")));
}

TEST(FilesTest, CopiesOverATargetButNeverOntoItself) {
  const TempFolder folder;
  const std::string bytes(300 * 1024, '\x80');
  WriteHostFile(folder.Host() / "from", bytes);
  WriteHostFile(folder.Host() / "to", std::string(400 * 1024, 'x'));
  EXPECT_TRUE(platform::CopyFileOver(folder.Path("from"), folder.Path("to")));
  EXPECT_EQ(ReadHostFile(folder.Host() / "to"), bytes);
  EXPECT_FALSE(platform::CopyFileOver(folder.Path("from"), folder.Path("FROM")));
  EXPECT_EQ(GetLastErrorCode(), platform::kSharingViolation);
  EXPECT_EQ(ReadHostFile(folder.Host() / "from"), bytes);
  EXPECT_FALSE(platform::CopyFileOver(folder.Path("none"), folder.Path("new")));
  EXPECT_EQ(GetLastErrorCode(), platform::kFileNotFound);
  EXPECT_FALSE(platform::FileExists(folder.Path("new")));
}

TEST(FilesTest, AStampChangesWhenAFileIsWrittenOrReplaced) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "a", "1");
  WriteHostFile(folder.Host() / "b", "1");
  platform::FileStamp first;
  platform::FileStamp second;
  ASSERT_TRUE(platform::GetFileStamp(folder.Path("a"), &first));
  ASSERT_TRUE(platform::GetFileStamp(folder.Path("A"), &second));
  EXPECT_EQ(first, second);
  std::filesystem::rename(folder.Host() / "b", folder.Host() / "a");
  ASSERT_TRUE(platform::GetFileStamp(folder.Path("a"), &second));
  EXPECT_NE(first, second);
}

std::vector<std::string> List(const std::string& path) {
  platform::FolderListing listing;
  std::vector<std::string> names;
  platform::FolderEntry entry;
  if (!listing.Open(path)) return {"error " + std::to_string(GetLastErrorCode())};
  while (listing.Next(&entry)) names.push_back(entry.name + (entry.isFolder ? "\\" : ""));
  EXPECT_EQ(GetLastErrorCode(), platform::kNoMoreFiles);
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
