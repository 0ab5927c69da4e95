#include "Support/foundation/Strings.h"

#include <gtest/gtest.h>

namespace vemra {
namespace {

TEST(StringsTest, Quotes) {
  EXPECT_EQ(QuoteString("a b", " ,"), "\"a b\"");
  EXPECT_EQ(QuoteString("ab", " ,"), "ab");
  EXPECT_EQ(QuoteString("", " ,"), "");
  EXPECT_EQ(QuoteString("a\",\"b", " ,"), "\"a\",\"b\"");
  EXPECT_EQ(QuoteString("a", '\''), "'a'");
  EXPECT_EQ(QuoteString("", '[', ']'), "[]");
}

TEST(StringsTest, StripsOnlyAPairOfQuotes) {
  for (const char* same : {"", "\"", "\"a", "a\"", "'a'"}) EXPECT_EQ(StripQuotes(same, '"'), same);
  EXPECT_EQ(StripQuotes("\"\"", '"'), "");
  EXPECT_EQ(StripQuotes("\"\"a\"\"", '"'), "\"a\"");
}

TEST(StringsTest, FindsFromTheEnd) {
  EXPECT_EQ(ReverseFind("abcabc", "bc"), 4);
  EXPECT_EQ(ReverseFind("aaa", "aa"), 1);
  EXPECT_EQ(ReverseFind("abc", "abcd"), -1);
  EXPECT_EQ(ReverseFind("abc", "x"), -1);
  EXPECT_EQ(ReverseFind("abc", ""), 3);
}

TEST(StringsTest, TruncatesAndReplaces) {
  std::string s = "abc";
  TruncateString(s, 4);
  EXPECT_EQ(s, "abc");
  TruncateString(s, 2);
  EXPECT_EQ(s, "ab");
  TruncateString(s, -1);
  EXPECT_EQ(s, "");
  std::string path = "a/b:c/d";
  EXPECT_EQ(ReplaceOneOfChars(ReplaceChar(path, '/', '\\'), ":\\", ':'), "a:b:c:d");
}

TEST(StringsTest, FoldsRunsOfWhiteSpace) {
  const struct {
    const char* source;
    int n;
    const char* result;
  } kRows[] = {{"  a \t b  ", 100, " a b "},
               {"  a \t b  ", 3, " a "},
               {"\v\f\r\n", 9, " "},
               {"a\xA0\xA0z", 9, "a\xA0\xA0z"},
               {"abc", 0, "old"},
               {"abc", -1, "old"},
               {"", 5, ""}};
  for (const auto& row : kRows) {
    std::string dest = "old";
    SmartStrncopy(dest, row.source, row.n);
    EXPECT_EQ(dest, row.result) << row.source << " by " << row.n;
  }
}

}  // namespace
}  // namespace vemra
