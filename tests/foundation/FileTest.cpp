#include "Support/foundation/File.h"

#include <gtest/gtest.h>

#include <system_error>
#include <utility>

#include "Support/foundation/Errors.h"
#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

using Access = TavoFile::Access;
using Creation = TavoFile::Creation;
using Share = TavoFile::Share;
using Origin = TavoFile::Origin;

// 0, or the code of the failure.
int TryOpen(const std::string& path, Access access, Creation creation, Share share) {
  try {
    const TavoFile file(path, access, creation, share);
    return 0;
  } catch (const std::system_error& error) {
    EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
    EXPECT_EQ(error.code().category(), SystemErrorCategory());
    return error.code().value();
  }
}

TEST(FileTest, EveryPairOfOpenersExcludesEachOtherAsTheirShareModesSay) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "f", "kept");
  const auto reads = [](int access) { return access != static_cast<int>(Access::kWrite); };
  const auto writes = [](int access) { return access != static_cast<int>(Access::kRead); };
  const auto deniesRead = [](int share) { return share >= static_cast<int>(Share::kDenyRead); };
  const auto deniesWrite = [](int share) { return (share & 1) != 0; };
  for (int pair = 0; pair < 3 * 4 * 3 * 4; ++pair) {
    const int a1 = pair % 3;
    const int s1 = pair / 3 % 4;
    const int a2 = pair / 12 % 3;
    const int s2 = pair / 36;
    SCOPED_TRACE(testing::Message() << "access " << a1 << " share " << s1 << ", then access " << a2
                                    << " share " << s2);
    const bool excluded = (deniesRead(s1) && reads(a2)) || (deniesRead(s2) && reads(a1)) ||
                          (deniesWrite(s1) && writes(a2)) || (deniesWrite(s2) && writes(a1));
    const TavoFile first(folder.Path("f"), static_cast<Access>(a1), Creation::kOpenExisting,
                         static_cast<Share>(s1));
    EXPECT_EQ(TryOpen(folder.Path("f"), static_cast<Access>(a2), Creation::kOpenExisting,
                      static_cast<Share>(s2)),
              excluded ? 32 : 0);
  }
  EXPECT_EQ(ReadHostFile(folder.Host() / "f"), "kept");
}

TEST(FileTest, ARefusedOpenerTruncatesNothing) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "f", "before");
  TavoFile holder(folder.Path("f"), Access::kWrite, Creation::kCreateTruncate, Share::kDenyWrite);
  EXPECT_EQ(holder.GetLength(), 0);
  holder.Write("kept", 4);
  EXPECT_EQ(TryOpen(folder.Path("f"), Access::kWrite, Creation::kCreateTruncate, Share::kAll), 32);
  EXPECT_EQ(holder.GetLength(), 4);
}

TEST(FileTest, SaysWhatIsMissing) {
  const TempFolder folder;
  const auto open = [&](const char* name, Creation creation) {
    return TryOpen(folder.Path(name), Access::kReadWrite, creation, Share::kAll);
  };
  EXPECT_EQ(open("none", Creation::kOpenExisting), 2);
  EXPECT_EQ(open("none\\f", Creation::kOpenOrCreate), 3);
  EXPECT_EQ(TryOpen(folder.Path(), Access::kRead, Creation::kOpenExisting, Share::kAll), 5);
  EXPECT_EQ(open("f", Creation::kOpenOrCreate), 0);
}

TEST(FileTest, ReadsWritesAndSeeks) {
  const TempFolder folder;
  TavoFile file(folder.Path("f"), Access::kReadWrite, Creation::kOpenOrCreate);
  file.Write("a\r\n\x1A\0b", 6);
  EXPECT_EQ(file.Seek(-3, Origin::kEnd), 3);
  char bytes[8] = {};
  EXPECT_EQ(file.Read(bytes, sizeof bytes), 3U);
  EXPECT_EQ(std::string(bytes, 3), std::string("\x1A\0b", 3));
  EXPECT_EQ(file.Read(bytes, sizeof bytes), 0U);
  EXPECT_THROW(file.Seek(-1, Origin::kBegin), std::system_error);
  file.SetLength(2);
  EXPECT_EQ(file.GetLength(), 2);
  TavoFile moved = std::move(file);
  EXPECT_TRUE(moved.IsOpen());
  moved.Close();
  EXPECT_THROW(moved.Write("x", 1), std::system_error);
}

TEST(FileTest, AStreamSharesThePositionAndOutlivesTheFile) {
  const TempFolder folder;
  TavoFile file(folder.Path("f"), Access::kReadWrite, Creation::kOpenOrCreate, Share::kDenyWrite);
  file.Write("one", 3);
  std::FILE* const stream = file.OpenStream("r+b");
  ASSERT_NE(stream, nullptr);
  std::fputs("two", stream);
  std::fflush(stream);
  file.Write("three", 5);
  file.Close();
  EXPECT_EQ(TryOpen(folder.Path("f"), Access::kWrite, Creation::kOpenExisting, Share::kAll), 32);
  std::fclose(stream);
  EXPECT_EQ(ReadHostFile(folder.Host() / "f"), "onetwothree");
  EXPECT_EQ(file.OpenStream("rb"), nullptr);
}

TEST(ErrorsTest, GivesTheSystemsTextOnOneLine) {
  for (const std::uint32_t code : {2U, 3U, 5U, 32U}) {
    const std::string text = GetErrorMessage(code);
    EXPECT_FALSE(text.empty()) << code;
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << text;
  }
  EXPECT_EQ(GetErrorMessage(0x1FFFFFFF), "");
}

}  // namespace
}  // namespace vemra::test
