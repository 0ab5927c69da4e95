#include "Support/foundation/BinaryRecords.h"

#include <gtest/gtest.h>

#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

class BinaryRecordsTest : public testing::Test {
 protected:
  BinaryRecordsTest()
      : file_(folder_.Path("f"), TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenOrCreate) {}

  TempFolder folder_;
  TavoFile file_;
};

TEST_F(BinaryRecordsTest, AnIntegerTakesAsManyBytesAsItNeeds) {
  const struct {
    std::int32_t value;
    std::string bytes;
  } kRows[] = {
      {0, std::string(1, '\0')},
      {254, "\xFE"},
      {255, std::string("\xFF\xFF\x00", 3)},
      {65534, "\xFF\xFE\xFF"},
      {65535, std::string("\xFF\xFF\xFF\xFF\xFF\x00\x00", 7)},
      {0x12345678, "\xFF\xFF\xFF\x78\x56\x34\x12"},
      {INT32_MIN, std::string("\xFF\xFF\xFF\x00\x00\x00\x80", 7)},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.value);
    file_.SetLength(0);
    file_.Seek(0, TavoFile::Origin::kBegin);
    EXPECT_EQ(WriteInt(file_, row.value), 1);
    EXPECT_EQ(ReadHostFile(folder_.Host() / "f"), row.bytes);
  }
}

TEST_F(BinaryRecordsTest, StringsRoundTrip) {
  const std::string texts[] = {"", std::string("a\0\r\n\xFF", 5), std::string(200000, 'x')};
  for (const std::string& text : texts) EXPECT_EQ(WriteString(file_, text), 1);
  file_.Seek(0, TavoFile::Origin::kBegin);
  for (const std::string& text : texts) {
    std::string back = "old";
    EXPECT_EQ(ReadString(file_, back), 1);
    EXPECT_EQ(back, text);
  }
  unsigned char byte = 7;
  EXPECT_EQ(ReadByte(file_, byte), 0);
  EXPECT_EQ(byte, 7);
}

TEST_F(BinaryRecordsTest, WhatTheFileRaisesIsAFailure) {
  TavoFile readOnly(folder_.Path("f"), TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  TavoFile closed;
  std::int32_t value = 0;
  EXPECT_EQ(WriteInt(readOnly, 1), 0);
  EXPECT_EQ(WriteString(readOnly, "a"), 0);
  EXPECT_EQ(ReadInt(closed, value), 0);
}

}  // namespace
}  // namespace vemra::test
