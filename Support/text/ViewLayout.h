#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/text/TextRange.h"

namespace vemra {

class TavoViewDocument;

// A document laid out for a window or a printer of fixed columns: paragraphs wrapped into lines,
// lines put on pages. Made in time linear in the text. Used by one thread at a time.
//
// A byte takes one column, a tab reaches to the next multiple of 8. A line that would be too wide
// is ended behind the last white space that lets it fit, and within a word only when that alone is
// too wide. White space may hang over at the end of a wrapped line; the line's range is without it.
// A page ends when it is full or at a form feed; a page without a line is left out.
class SUPPORT_API TavoViewLayout {
 public:
  static constexpr int kTabWidth = 8;

  // document is a loan for the life of the layout and must not change. columns below 1: paragraphs
  // are not wrapped; linesPerPage below 1: only form feeds end pages.
  TavoViewLayout(const TavoViewDocument& document, int columns, int linesPerPage);

  int GetLinesNumber() const { return static_cast<int>(lines_.size()); }
  // index from 0; it must be valid, as for pages.
  const TavoTextRange& GetLine(int index) const { return lines_[static_cast<std::size_t>(index)]; }
  // The line that holds a position, with the white space behind it; the first line for a position
  // before the text, the last for one behind it, -1 without any line.
  int GetLineAt(int position) const;

  int GetPagesNumber() const { return static_cast<int>(pages_.size()); }
  int GetFirstLine(int page) const { return pages_[static_cast<std::size_t>(page)]; }
  int GetLinesNumber(int page) const;
  int GetPageAt(int position) const;  // as GetLineAt
  // For the printer: the lines of a page, each ended by a line feed.
  std::string GetPageText(int page) const;

 private:
  void AddParagraph(const TavoTextRange& paragraph, int columns);

  const TavoViewDocument& document_;
  std::vector<TavoTextRange> lines_;
  std::vector<int> pages_;  // their first lines
};

}  // namespace vemra
