#include "programs/formats/PlainText.h"

#include "Support/text/ByteSet.h"
#include "programs/formats/WhiteSpace.h"

namespace vemra {

namespace {

// The white space that ends a paragraph: it holds a form feed or two line ends. A line ends with a
// line feed, or with a carriage return alone.
struct Gap {
  std::size_t start;
  std::size_t length;
};

bool IsParagraphGap(std::string_view blanks) {
  int lines = 0;
  for (std::size_t i = 0; i < blanks.size(); ++i) {
    if (blanks[i] == '\f') return true;
    const bool endsWithNext = blanks[i] == '\r' && i + 1 < blanks.size() && blanks[i + 1] == '\n';
    if (blanks[i] == '\n' || (blanks[i] == '\r' && !endsWithNext)) ++lines;
  }
  return lines >= 2;
}

const ByteSet& LineEnds() {
  static const ByteSet lineEnds("\n\r\f");
  return lineEnds;
}

// The next such gap; at the end of the text, which ends its last paragraph, when there is none.
// Indentation after the gap's last line end belongs to the paragraph that follows.
Gap FindGap(std::string_view text) {
  const ByteSet& lineEnds = LineEnds();
  std::size_t end = 0;
  while (end = lineEnds.FindIn(text, end), end < text.size()) {
    const std::size_t start = end;
    std::size_t lastLineEnd = end;
    for (; end < text.size() && IsBlank(text[end]); ++end) {
      if (lineEnds.Has(static_cast<unsigned char>(text[end]))) lastLineEnd = end;
    }
    if (IsParagraphGap(text.substr(start, end - start))) return {start, lastLineEnd + 1 - start};
  }
  return {text.size(), 0};
}

bool HasGap(std::string_view text) {
  return FindGap(text).length > 0;
}

}  // namespace

int PlainTextParser::ParseInput(TavoInput* input) {
  const RestOfInput document(*input);
  std::string_view text = document.GetText();
  OnStart();
  WriteMarkup("<pre>\n");  // of which pages leave the line end out
  CTavoFieldList fields;
  fields.Set(0);
  SetFieldList(fields);
  // Lines are the only structure of a text without a blank line. In any other text they are just
  // where the writer's editor wrapped a sentence.
  Gap gap = FindGap(text);
  const bool hasBlankLine = gap.length > 0 && HasGap(TrimStart(TrimEnd(text)));
  SetBreakOnNewLine(hasBlankLine ? 0 : 1);
  for (; !text.empty() && !DoStopParsing(); gap = FindGap(text)) {
    Deliver(text.substr(0, gap.start));
    WriteLayout(text.substr(gap.start, gap.length));
    SetNewParagraph();
    text.remove_prefix(gap.start + gap.length);
  }
  WriteMarkup("</pre>\n");
  return OnEnd();
}

}  // namespace vemra
