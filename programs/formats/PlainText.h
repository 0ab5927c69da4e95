#pragma once

#include "programs/formats/FormatParser.h"

namespace vemra {

// Plain text, all of it in the general field, one run a paragraph. Paragraphs end at blank lines
// and form feeds. In a text without a blank line, such as a log or a list, each line is one.
class PlainTextParser : public FormatParser {
 public:
  using FormatParser::FormatParser;

 protected:
  int ParseInput(TavoInput* input) override;
  Declaration GetDeclaration() const override { return Declaration::kNone; }
};

}  // namespace vemra
