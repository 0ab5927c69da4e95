#include "Support/text/ViewLayout.h"

#include <gtest/gtest.h>

#include <random>

#include "Support/text/ViewDocument.h"

namespace vemra {
namespace {

// Pages of lines: "a|b|^c|".
std::string Pages(const TavoViewDocument& document, int columns, int linesPerPage) {
  const TavoViewLayout layout(document, columns, linesPerPage);
  std::string all;
  for (int page = 0; page < layout.GetPagesNumber(); ++page) {
    if (page > 0) all += '^';
    std::string text = layout.GetPageText(page);
    for (char& c : text) {
      if (c == '\n') c = '|';
    }
    all += text;
  }
  return all;
}

TavoViewDocument Document(const std::string& text) {
  TavoViewDocument document;
  document.AppendText(text);
  return document;
}

TEST(ViewLayoutTest, WrapsAndPaginates) {
  const struct {
    const char* label;
    const char* text;
    int columns;
    int lines;
    const char* pages;
  } kRows[] = {
      {"nothing", "", 10, 2, ""},
      {"fits exactly", "ab cd", 5, 0, "ab cd|"},
      {"one too wide", "ab cd", 4, 0, "ab|cd|"},
      {"blank hangs over", "ab  cd", 3, 0, "ab|cd|"},
      {"trailing blanks", "ab    ", 3, 0, "ab|"},
      {"blanks that fit", "ab  ", 4, 0, "ab  |"},
      {"long word", "abcdefg", 3, 0, "abc|def|g|"},
      {"long word behind another", "a bcdefg h", 4, 0, "a|bcde|fg h|"},
      {"one column", "ab c", 1, 0, "a|b|c|"},
      {"indentation before a long word", "  abcd", 4, 0, "|abcd|"},
      {"tabs", "a\tb c", 9, 0, "a\tb|c|"},
      {"tab too wide", "a\tb", 5, 0, "a|b|"},
      {"no columns", "a b c d", 0, 0, "a b c d|"},
      {"empty paragraphs", "a\n\nb", 5, 0, "a||b|"},
      {"full pages", "a\nb\nc\nd\ne", 5, 2, "a|b|^c|d|^e|"},
      {"form feed", "a\fb\nc", 5, 9, "a|^b|c|"},
      {"form feed behind a full page", "a\nb\n\fc", 5, 2, "a|b|^c|"},
      {"form feeds without lines", "\f\fa\n\f\f\fb\f\f", 5, 2, "a|^b|"},
      {"wrapped over a page", "a b c\fd", 1, 2, "a|b|^c|^d|"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(Pages(Document(row.text), row.columns, row.lines), row.pages);
  }
}

int Width(std::string_view line) {
  int width = 0;
  for (const char c : line) width = c == '\t' ? (width / 8 + 1) * 8 : width + 1;
  return width;
}

// No line is too wide; nothing but white space stands between lines; and no line could have taken
// the next word as well.
TEST(ViewLayoutTest, FillsLinesAndLosesNothing) {
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (std::size_t i = random() % 60; i > 0; --i) text += "abc  \t\n\r\f"[random() % 9];
    const int columns = 1 + static_cast<int>(random() % 12);
    SCOPED_TRACE(text + "/" + std::to_string(columns));
    const TavoViewDocument document = Document(text);
    const TavoViewLayout layout(document, columns, 1 + static_cast<int>(random() % 5));
    int end = 0;
    for (int i = 0; i < layout.GetLinesNumber(); ++i) {
      const TavoTextRange& line = layout.GetLine(i);
      ASSERT_LE(Width(document.GetText(line)), columns);
      for (; end < line.start; ++end) ASSERT_TRUE(std::isspace(text[end])) << end;
      end = line.GetEnd();
      ASSERT_EQ(layout.GetLineAt(line.start), i);
      const int page = layout.GetPageAt(line.start);
      ASSERT_LE(layout.GetFirstLine(page), i);
      ASSERT_LT(i, layout.GetFirstLine(page) + layout.GetLinesNumber(page));
      const int paragraph = document.GetParagraphAt(line.start);
      const TavoTextRange whole = document.GetParagraph(paragraph);
      if (i + 1 == layout.GetLinesNumber() || layout.GetLine(i + 1).start >= whole.GetEnd())
        continue;
      const int next = layout.GetLine(i + 1).start;
      const std::size_t wordEnd =
          std::min<std::size_t>(text.find_first_of(" \t", next), whole.GetEnd());
      ASSERT_GT(Width(document.GetText({line.start, static_cast<int>(wordEnd) - line.start})),
                columns);
    }
    for (std::size_t i = end; i < text.size(); ++i) ASSERT_TRUE(std::isspace(text[i]));
  }
}

}  // namespace
}  // namespace vemra
