#include "Support/foundation/Scramble.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

namespace vemra {
namespace {

constexpr char kBuiltInKey[] = "tormaquelvinade";
constexpr std::size_t kBlock = 2048;

// The rule pair by pair, with the terminator that tells where the stream starts again.
void PlainAdd(std::string& buffer, std::size_t from, std::size_t end, std::string_view key,
              unsigned product) {
  std::string stream;
  for (const char c : key) {
    const char derived = char(c ^ char(product & 0xFF));
    stream += derived == 0 ? c : derived;
  }
  stream += stream;
  if (stream.empty()) return;
  std::size_t pair = 0;
  for (std::size_t at = from; at + 1 < end; at += 2) {
    buffer[at] = char(buffer[at] ^ stream[pair]);
    buffer[at + 1] = char(buffer[at + 1] ^ stream[pair + 1]);
    pair += 2;
    if (pair == stream.size()) pair = 0;
  }
}

std::string RandomText(std::size_t size) {
  static std::mt19937 random(3);
  std::string text(size, '\0');
  std::generate(text.begin(), text.end(), [] { return char(random()); });
  return text;
}

TEST(ScrambleTest, EncryptFollowsTheRuleAndUndoesItself) {
  for (const unsigned length : {0U, 1U, 2U, 3U, 7U, 8U, 29U, 30U, 31U, 60U, 2039U, 2040U, 2048U,
                                2050U, 5001U, 65534U, 65535U}) {
    // 0x74 is the key's first character, which therefore stands for itself.
    for (const unsigned a : {0U, 1U, 0x74U, 65535U}) {
      const std::string plain = RandomText(length);
      std::string expected = plain;
      PlainAdd(expected, 0, length, kBuiltInKey, a * 0x101);
      std::string buffer = plain;
      encrypt(buffer.data(), std::uint16_t(a), 0x101, std::uint16_t(length));
      EXPECT_EQ(buffer, expected) << length << " bytes, a = " << a;
      encrypt(buffer.data(), std::uint16_t(a), 0x101, std::uint16_t(length));
      EXPECT_EQ(buffer, plain) << length << " bytes, a = " << a;
    }
  }
}

TEST(ScrambleTest, OldEncryptTakesEachBlockByItsNumber) {
  const std::string longKey(3001, 'k');
  const struct {
    std::uint16_t b;
    std::uint16_t count;
    const char* key;                                                      // null: the built-in one
  } kRows[] = {{1, 0, nullptr},        {1, 3, nullptr}, {0, 2, nullptr},  // number 0 comes first
               {0xFFFE, 4, nullptr},                                      // or later
               {7, 2, "abc"},          {7, 1, "x"},     {7, 2, ""},      {7, 2, "\xE4\xF6\xFC"},
               {3, 2, longKey.c_str()}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(&row - kRows);
    const std::string plain = RandomText(row.count * kBlock);
    std::string expected = plain;
    for (unsigned j = 0; j < row.count; ++j) {
      if ((row.b + j) % 0x10000 == 0) continue;
      PlainAdd(expected, j * kBlock, (j + 1) * kBlock, row.key == nullptr ? kBuiltInKey : row.key,
               3 * (row.b + j));
    }
    std::string buffer = plain;
    OldEncrypt(buffer.data(), 3, row.b, row.count, row.key);
    EXPECT_EQ(buffer, expected);
    OldEncrypt(buffer.data(), 3, row.b, row.count, row.key);
    EXPECT_EQ(buffer, plain);
  }
}

class FileNameTest : public testing::Test {
 protected:
  ~FileNameTest() override { SetFileNameKey(kBuiltInKey); }
};

TEST_F(FileNameTest, ReplacesTheLettersAfterTheColon) {
  const struct {
    const char* key;
    const char* name;
    const char* expected;
  } cases[] = {
      {"A", "C:abyz", "C:CDAB"},     // k = 1 and c counts from 1, so the letters move by two
      {"AB", "C:a.a-a", "C:C.D-C"},  // what is no letter takes no character of the key
      {"Z", "d:Az", "d:BA"},        {"1", "C:a", "C:S"},  // the low five bits of "1" are 17
      {"A", "noColon", "noColon"},  {"A", "a:b:c", "a:D:E"}, {"A", "C:\xE4[`{@", "C:\xE4[`{@"},
      {"", "C:abc", "C:abc"},       {"A", "", ""},           {kBuiltInKey, "C:AAA", "C:VQT"},
  };
  for (const auto& row : cases) {
    SetFileNameKey(row.key);
    std::string name = row.name;
    encrypt_filename(name);
    EXPECT_EQ(name, row.expected) << row.name << " by " << row.key;
  }
}

TEST_F(FileNameTest, TheTwoUndoEachOther) {
  std::string every = "C:";
  for (int c = 1; c < 3 * 256; ++c) {
    if (c % 256 < 'a' || c % 256 > 'z') every += char(c);
  }
  for (const std::string& key :
       {std::string(kBuiltInKey), std::string("\xFF\x01 9zZ"), std::string(1, '\0')}) {
    SetFileNameKey(key);
    std::string name = every;
    encrypt_filename(name);
    EXPECT_NE(name, every);
    encrypt_unfilename(name);
    EXPECT_EQ(name, every);
    encrypt_unfilename(name);
    encrypt_filename(name);
    EXPECT_EQ(name, every);
  }
}

}  // namespace
}  // namespace vemra
