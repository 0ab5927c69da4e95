#include "Support/foundation/BinaryRecords.h"

#include <gtest/gtest.h>

#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

class BinaryRecordsTest : public testing::Test {
 protected:
  BinaryRecordsTest()
      : file_(folder_.Path("f"), TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenOrCreate) {}

  void Put(const std::string& bytes) {
    file_.SetLength(0);
    file_.Seek(0, TavoFile::Origin::kBegin);
    file_.Write(bytes.data(), bytes.size());
    file_.Seek(0, TavoFile::Origin::kBegin);
  }

  TempFolder folder_;
  TavoFile file_;
};

TEST_F(BinaryRecordsTest, AnIntegerTakesAsManyBytesAsItNeeds) {
  struct Row {
    std::int32_t value;
    std::string bytes;
  };
  const Row rows[] = {
      {0, std::string(1, '\0')},
      {254, "\xFE"},
      {255, std::string("\xFF\xFF\x00", 3)},
      {65534, "\xFF\xFE\xFF"},
      {65535, std::string("\xFF\xFF\xFF\xFF\xFF\x00\x00", 7)},
      {0x12345678, "\xFF\xFF\xFF\x78\x56\x34\x12"},
      {-1, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF"},
      {INT32_MIN, std::string("\xFF\xFF\xFF\x00\x00\x00\x80", 7)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.value);
    Put("");
    EXPECT_EQ(WriteInt(file_, row.value), 1);
    EXPECT_EQ(ReadHostFile(folder_.Host() / "f"), row.bytes);
    std::int32_t value = 77;
    for (std::size_t cut = 0; cut < row.bytes.size(); ++cut) {
      Put(row.bytes.substr(0, cut));
      EXPECT_EQ(ReadInt(file_, value), 0);
      EXPECT_EQ(value, 77);
    }
    Put(row.bytes);
    EXPECT_EQ(ReadInt(file_, value), 1);
    EXPECT_EQ(value, row.value);
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

TEST_F(BinaryRecordsTest, ABadStringFails) {
  struct Row {
    const char* label;
    std::string bytes;
    const char* left;
  };
  const Row rows[] = {
      {"no length", "", "old"},
      {"cut length", "\xFF\x01", "old"},
      {"negative length", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF", "old"},
      {"cut text",
       "\x05"
       "abc",
       ""},
      {"a length that lies",
       "\xFF\xFF\xFF\xFF\xFF\xFF\x7F"
       "abc",
       ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    Put(row.bytes);
    std::string text = "old";
    EXPECT_EQ(ReadString(file_, text), 0);
    EXPECT_EQ(text, row.left);
  }
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
