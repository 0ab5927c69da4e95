#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Support/definition/FieldList.h"
#include "programs/formats/CharacterReference.h"
#include "programs/formats/ElementPath.h"
#include "programs/formats/FormatParser.h"
#include "programs/formats/HtmlTokenizer.h"
#include "programs/formats/MarkupStack.h"
#include "programs/formats/PathFields.h"
#include "programs/formats/RunMarkup.h"
#include "programs/formats/RunText.h"
#include "programs/formats/SafeMarkup.h"

namespace vemra {

// HTML pages, in one pass and bounded memory beside the page itself, whatever the bytes.
//
// Text belongs to the fields whose rules name its element path ("<html><body><p>", names in lower
// case), else to the general field. A run ends at every tag but those of inline elements (b, em,
// code, ...), and wherever the fields change. Blocks, table cells and list items are paragraphs;
// within pre so is each line. White space is collapsed, but not in pre.
//
// Attributes give text only where a rule names them, each value as a run of its own: by the path of
// their element, itself included, and their name in lower case. The content of <meta name=X> stands
// as an attribute X, in lower case, of its meta element.
//
// Written text is laid out in lines: blocks parted by blank lines, bullets before list items,
// "Title: " and the names of meta elements before their text, attribute text of images in brackets.
// Or it stands in the document's own markup, as far as SafeMarkup.h lets it through, well nested;
// title and meta elements are blocks then, with the same names.
class HtmlParser : public FormatParser {
 public:
  // Both are loans for the life of the parser.
  HtmlParser(TavoTHWrapper* wrapper, const CodePage& codePage);

 protected:
  int ParseInput(TavoInput* input) override;
  Declaration GetDeclaration() const override { return Declaration::kMarkup; }

 private:
  void Reset();
  void HandleToken(HtmlTokenizer& tokenizer, const HtmlToken& token);
  void HandleStartTag(HtmlTokenizer& tokenizer, const HtmlToken& tag);
  void HandleEndTag(const HtmlToken& tag);
  void HandleContent(HtmlTokenizer& tokenizer, const HtmlElement& element);

  // Markup, where it is written.
  void OpenMarkup(const HtmlElement& element, const std::vector<HtmlAttribute>& attributes);
  std::vector<PlainAttribute> WrittenAttributes(const HtmlElement& element,
                                                const std::vector<HtmlAttribute>& attributes) const;
  void WritePendingMarkup();

  // Text.
  void HandleText(std::string_view text);
  void StartText();
  void AppendPiece(std::string_view& text);
  void TakeReference(std::string_view& text, ReferencePlace place, std::string& out) const;
  void LimitRun();

  // Attributes.
  void HandleAttributes(const std::vector<HtmlAttribute>& attributes, std::string_view element);
  void HandleMeta(const std::vector<HtmlAttribute>& attributes);
  void HandleMetaInPage(const std::string& name, std::string_view content);
  void HandleValue(std::string_view name, std::string_view value, std::string_view before,
                   std::string_view after);
  std::string DecodeValue(std::string_view value) const;
  const std::string* FindWantedAttribute(std::string_view name) const;

  // Runs.
  void Break(HtmlBoundary boundary);
  void EndRun(HtmlBoundary boundary);
  void HandOver(std::string_view text, SectionMarkup markup);
  void WriteTrailingTags();
  void WriteTags(const SectionMarkup& markup);
  void WriteGap(bool space);

  MarkupStack markup_;  // before its user
  ElementPath path_{&markup_};
  bool pathChanged_ = true;  // since runFields_ were looked up
  PathFields pathFields_;
  std::vector<std::string> wantedAttributes_;  // that any rule of the file type names
  std::uint64_t wantedLengths_ = 0;            // the LengthBits of those

  RunText run_;
  RunMarkup runMarkup_;
  CTavoFieldList runFields_;
  bool runIsVerbatim_ = false;
  bool skipLineEnd_ = false;  // the next text is the first within pre
  bool atLineStart_ = true;   // no text since the last boundary that ends a line
  std::string reference_;     // kept for its capacity

  HtmlBoundary gap_ = HtmlBoundary::kInline;  // since the last text that was written
  bool hasWritten_ = false;
  std::string_view label_;  // goes before the next text that is written
};

}  // namespace vemra
