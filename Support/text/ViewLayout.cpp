#include "Support/text/ViewLayout.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "Support/text/ViewDocument.h"

namespace vemra {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

// The bytes of the first line of text: without the white space that the line ends with when it is
// wrapped, and with it.
struct WrappedLine {
  std::size_t shown;
  std::size_t taken;
};

WrappedLine TakeLine(std::string_view text, int columns) {
  std::int64_t column = 0;
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    column +=
        text[end] == '\t' ? TavoViewLayout::kTabWidth - column % TavoViewLayout::kTabWidth : 1;
    if (column > columns) break;
  }
  if (end == text.size()) return {end, end};
  // Back to the start of the word that is too wide, unless the whole line is one word.
  std::size_t shown = end;
  if (!IsBlank(text[end])) {
    while (shown > 0 && !IsBlank(text[shown - 1])) --shown;
    if (shown == 0) return {end, end};
  }
  std::size_t taken = shown;
  while (taken < text.size() && IsBlank(text[taken])) ++taken;
  while (shown > 0 && IsBlank(text[shown - 1])) --shown;
  return {shown, taken};
}

}  // namespace

TavoViewLayout::TavoViewLayout(const TavoViewDocument& document, int columns, int linesPerPage)
    : document_(document) {
  bool newPage = true;
  for (int i = 0; i < document.GetParagraphsNumber(); ++i) {
    const TavoTextRange paragraph = document.GetParagraph(i);
    // A form feed right behind a line's end ends the page, and no line of its own.
    const bool onlyEndsPage = paragraph.length == 0 && document.EndsPage(i);
    const int first = GetLinesNumber();
    if (!onlyEndsPage) AddParagraph(paragraph, columns);
    for (int line = first; line < GetLinesNumber(); ++line) {
      if (newPage || (linesPerPage > 0 && line - pages_.back() >= linesPerPage)) {
        pages_.push_back(line);
      }
      newPage = false;
    }
    if (document.EndsPage(i)) newPage = true;
  }
}

void TavoViewLayout::AddParagraph(const TavoTextRange& paragraph, int columns) {
  std::string_view text = document_.GetText(paragraph);
  int start = paragraph.start;
  do {
    const WrappedLine line =
        columns > 0 ? TakeLine(text, columns) : WrappedLine{text.size(), text.size()};
    lines_.push_back({.start = start, .length = static_cast<int>(line.shown)});
    start += static_cast<int>(line.taken);
    text.remove_prefix(line.taken);
  } while (!text.empty());
}

int TavoViewLayout::GetLineAt(int position) const {
  const auto next =
      std::upper_bound(lines_.begin(), lines_.end(), position,
                       [](int wanted, const TavoTextRange& line) { return wanted < line.start; });
  if (lines_.empty()) return -1;
  return std::max(static_cast<int>(next - lines_.begin()) - 1, 0);
}

int TavoViewLayout::GetLinesNumber(int page) const {
  const bool last = page + 1 == GetPagesNumber();
  return (last ? GetLinesNumber() : GetFirstLine(page + 1)) - GetFirstLine(page);
}

int TavoViewLayout::GetPageAt(int position) const {
  const int line = GetLineAt(position);
  if (line < 0) return -1;
  const auto next = std::upper_bound(pages_.begin(), pages_.end(), line);
  return static_cast<int>(next - pages_.begin()) - 1;
}

std::string TavoViewLayout::GetPageText(int page) const {
  std::string text;
  const int first = GetFirstLine(page);
  for (int line = first; line < first + GetLinesNumber(page); ++line) {
    text += document_.GetText(GetLine(line));
    text += '\n';
  }
  return text;
}

}  // namespace vemra
