#include "programs/formats/MarkedSection.h"

#include <gtest/gtest.h>

#include <functional>

#include "programs/formats/HitStyle.h"

namespace vemra {
namespace {

// Marks the real words of these numbers; a part of word n is n + 100 * (part + 1).
std::string Mark(const HitStyle& style, const std::string& text, const std::vector<int>& numbers,
                 int hitsBefore = 0) {
  MarkedSection section(nullptr, text, nullptr, style);
  section.ParseContents();
  for (const int number : numbers) {
    TavoWord* word = section.GetWordAt(number % 100);
    if (number >= 100) {
      TavoWord* part = word->GetFirstWord();
      for (int i = 1; i < number / 100; ++i) part = word->GetNextWord(part);
      word = part;
    }
    word->Mark();
  }
  section.SetInitialHighlightCount(hitsBefore);
  section.MarkContents();
  EXPECT_EQ(section.GetCurrentHighlightCount(), hitsBefore + static_cast<int>(numbers.size()));
  return section.GetMarkedContents();
}

TEST(MarkedSectionTest, MarksWordsAndPartsWithoutThePunctuationAroundThem) {
  const BracketStyle style;
  EXPECT_EQ(Mark(style, "one two, three", {}), "one two, three");
  EXPECT_EQ(Mark(style, "one two, three", {0, 1}), "[1]one [2]two, three");
  EXPECT_EQ(Mark(style, "one\n two", {1}, 7), "one\n [8]two");
  EXPECT_EQ(Mark(style, "x \"well-known\" y", {1}), "x \"[1]well-known\" y");
  EXPECT_EQ(Mark(style, "a well-known b", {301}), "a well-[1]known b");
  EXPECT_EQ(Mark(style, "well-known", {100, 300}), "[1]well-[2]known");
}

TEST(MarkedSectionTest, StylesEscapeWhatIsText) {
  EXPECT_EQ(Mark(HtmlStyle(), "<b> \"x\" & 'y'", {1, 2}, 1),
            "&#60;b&#62; &#34;<mark id=\"hit2\"><a href=\"#hit1\">&lsaquo;</a>x"
            "<a href=\"#hit3\">&rsaquo;</a></mark>&#34; &#38; &#39;"
            "<mark id=\"hit3\"><a href=\"#hit2\">&lsaquo;</a>y"
            "<a href=\"#hit4\">&rsaquo;</a></mark>&#39;");
  EXPECT_EQ(Mark(AnsiStyle(), "a b", {1}), "a \x1B[1;31mb\x1B[0m");
}

TEST(MarkedSectionTest, CopyOfASectionKeepsItsMarks) {
  const BracketStyle style;
  TavoSection plain(nullptr, "one two", nullptr);
  plain.ParseContents();
  plain.GetWordAt(1)->Mark();
  MarkedSection marked(plain, style);
  marked.MarkContents();
  EXPECT_EQ(marked.GetMarkedContents(), "one [1]two");
}

}  // namespace
}  // namespace vemra
