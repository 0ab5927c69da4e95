#include "Support/foundation/Strings.h"

#include <gtest/gtest.h>

#include <vector>

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

TEST(StringsTest, ReadsTheItemsOfAList) {
  struct Row {
    const char* list;
    std::vector<std::string> items;  // up to the end, or to the first call that does not move
    const char* left;
  };
  const Row rows[] = {
      {"\"My Type\",b", {"My Type", "b"}, ""},
      {"\"a,b\"c,d", {"a,b", "c", "d"}, ""},
      {"\"never closed,b", {}, "\"never closed,b"},
      {"a,,b", {"a", "b"}, ""},
      {"a,,,b", {"a", "", "b"}, ""},
      {"\"a\",,b", {"a", "", "b"}, ""},
      {" a , b", {" a ", " b"}, ""},
      {"a,", {"a"}, ""},
      {"\"\"", {""}, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.list);
    const char* text = row.list;
    std::vector<std::string> items;
    while (*text != '\0') {
      const char* const before = text;
      const std::string item = ReadFileName(text);
      if (text == before) break;
      items.push_back(item);
    }
    EXPECT_EQ(items, row.items);
    EXPECT_STREQ(text, row.left);
  }
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
  struct Row {
    const char* source;
    int n;
    const char* result;
  };
  const Row rows[] = {
      {"  a \t b  ", 100, " a b "},
      {"  a \t b  ", 3, " a "},
      {"\v\f\r\n", 9, " "},
      {"a\xA0\xA0z", 9, "a\xA0\xA0z"},
      {"abc", 0, "old"},
      {"abc", -1, "old"},
      {"", 5, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.source);
    std::string dest = "old";
    SmartStrncopy(dest, row.source, row.n);
    EXPECT_EQ(dest, row.result);
  }
}

}  // namespace
}  // namespace vemra
