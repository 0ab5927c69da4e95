#include "Support/text/Input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vemra {
namespace {

std::vector<std::string> CutAll(TavoInput& input) {
  std::vector<std::string> words;
  while (!input.AtEOF()) words.push_back(input.CutWord());
  return words;
}

TEST(Input, CutsWords) {
  using Words = std::vector<std::string>;
  const std::pair<std::string, Words> rows[] = {
      {"", {}},
      {"a(b)", {"a", "(", "b", ")"}},
      {" word", {"", "word"}},
      {"one \t\r\n two?", {"one", "two", "?"}},
      {"x||y , z", {"x", "|", "|", "y", ",", "z"}},
      {"caf\xE9 +\xFF", {"caf\xE9", "+", "\xFF"}},
      {std::string("a\0b c", 5), {std::string("a\0b", 3), "c"}},
  };
  for (const auto& [text, words] : rows) {
    SCOPED_TRACE(text);
    TavoInput input;
    input.SetString(text);
    EXPECT_EQ(CutAll(input), words);
    EXPECT_EQ(input.CutWord(), "");
    EXPECT_EQ(input.GetFirstChar(), '\0');
  }
}

TEST(Input, ReadsExpandedTextFirst) {
  TavoInput input;
  input.SetString("  given text");
  input.AddExpandedString("b ");
  input.AddExpandedString("a");
  EXPECT_EQ(input.GetFirstWord(), "ab");
  EXPECT_EQ(input.CutWord(), "ab");
  // White space ended the expanded text, so that of the given text is still there.
  EXPECT_EQ(input.GetWhiteSpaceCut(), " ");
  EXPECT_EQ(input.GetFirstChar(), ' ');
  EXPECT_EQ(input.CutWord(), "");
  // A word that ends the expanded text is followed by eating the given text's white space.
  input.SetString("  y");
  input.AddExpandedString("x");
  EXPECT_EQ(input.CutWord(), "x");
  EXPECT_EQ(input.GetWhiteSpaceCut(), "  ");
  EXPECT_EQ(input.GetWhiteSpaceCut(), "");
  EXPECT_EQ(input.CutWord(), "y");
  // Text pushed while some is unread goes in front of that.
  input.SetString("c");
  input.AddExpandedString("a b ");
  EXPECT_EQ(input.CutWord(), "a");
  input.AddExpandedString("n ");
  EXPECT_EQ(CutAll(input), (std::vector<std::string>{"n", "b", "c"}));
}

TEST(Input, MovesOnAcrossTheSeam) {
  struct Row {
    int n;
    char next;
  };
  for (const Row& row : {Row{-1, 'a'}, {0, 'a'}, {1, 'b'}, {2, 'c'}, {3, 'd'}, {4, 0}, {99, 0}}) {
    SCOPED_TRACE(row.n);
    TavoInput input;
    input.SetString("cd");
    input.AddExpandedString("ab");
    input.MoveOn(row.n);
    EXPECT_EQ(input.GetFirstChar(), row.next);
    EXPECT_EQ(input.AtEOF(), row.next == 0);
  }
}

TEST(Input, ReadsUpToATerminator) {
  struct Row {
    const char* expanded;
    const char* given;
    std::string terminator;
    int consume;
    const char* taken;
    std::string left;
  };
  const Row rows[] = {
      {"", "key=value", "=", 1, "key", "value"},
      {"", "key=value", "=", 0, "key", "=value"},
      {"", "key", "=", 1, "key", ""},
      {"ab=", "cd", "=", 1, "ab", "cd"},
      {"ab", "cd=e", "=", 1, "abcd", "e"},
      {"ab", "cd", "=", 1, "abcd", ""},
      {"", "a-->b", "-->", 1, "a", "b"},
      {"", "a-->b", "-->", 0, "a", "-->b"},
      {"a-", "->b-->c", "-->", 1, "a-->b", "c"},
      {"", "abc", "", 1, "", "abc"},
      {"", "", "=", 1, "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.expanded << "|" << row.given << " " << row.terminator);
    TavoInput input;
    input.SetString(row.given);
    input.AddExpandedString(row.expanded);
    TavoInput same(input);
    EXPECT_EQ(input.GetUpTo(row.terminator, row.consume), row.taken);
    EXPECT_EQ(input.GetUnread(), row.left);
    if (row.terminator.size() != 1) continue;
    EXPECT_EQ(same.GetUpTo(row.terminator[0], row.consume), row.taken);
    EXPECT_EQ(same.GetUnread(), row.left);
  }
}

TEST(Input, ReadsQuotedStrings) {
  struct Row {
    const char* expanded;
    const char* given;
    int quotedOnly;
    int result;
    const char* out;  // "-" where it is not touched
    const char* left;
  };
  const Row rows[] = {
      {"", "\"a b\" c", 1, 1, "\"a b\"", " c"},
      {"", "'a\"b'c", 0, 1, "'a\"b'", "c"},
      {"", "''", 1, 1, "''", ""},
      {"", "\"open", 1, 0, "-", "\"open"},
      {"", "\"", 0, 0, "-", "\""},
      {"", "word x", 1, 0, "-", "word x"},
      {"", "word x", 0, 1, "word", "x"},
      {"'x' ", "y", 1, 1, "'x'", " "},
      {"'x", " y' z", 1, 1, "'x y'", " z"},
      {"'x", "y", 1, 0, "-", "y"},
      {"", "", 0, 1, "", ""},
      {"", "", 1, 0, "-", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.expanded << "|" << row.given);
    TavoInput input;
    input.SetString(row.given);
    input.AddExpandedString(row.expanded);
    std::string out = "-";
    EXPECT_EQ(input.GetQuotedStringOrWord(out, row.quotedOnly), row.result);
    EXPECT_EQ(out, row.out);
    EXPECT_EQ(input.GetUnread(), row.left);
  }
}

TEST(Input, LowersWhatItHandsOut) {
  TavoInput input;
  input.SetLowerCase(1);
  input.SetString("AB 'CD' EF=\xC9");
  EXPECT_EQ(input.GetFirstWord(), "ab");
  EXPECT_EQ(input.CutWord(), "ab");
  std::string quoted;
  EXPECT_EQ(input.GetQuotedStringOrWord(quoted, 1), 1);
  EXPECT_EQ(quoted, "'cd'");
  EXPECT_EQ(input.GetUpTo('=', 1), " ef");
  EXPECT_EQ(input.GetContext(9), "\xC9");
}

TEST(Input, ShowsItsContext) {
  TavoInput input;
  input.SetString("0123456789abcdefghij");
  EXPECT_EQ(input.GetContext(10), "0123456...");
  EXPECT_EQ(input.GetContext(20), "0123456789abcdefghij");
  EXPECT_EQ(input.GetContext(1), "...");
  input.MoveOn(15);
  input.AddExpandedString("not shown");
  EXPECT_EQ(input.GetContext(10), "fghij");
}

TEST(Input, ReadsALargeTextInLinearTime) {
  std::string text;
  for (int i = 0; i < 1000000; ++i) text += "a<b>";
  TavoInput input;
  input.SetString(text);
  int tags = 0;
  for (; !input.AtEOF(); ++tags) {
    input.GetUpTo('<', 0);
    input.GetUpTo(">", 1);
  }
  EXPECT_EQ(tags, 1000000);
}

}  // namespace
}  // namespace vemra
