#pragma once

#include <string>
#include <utility>

#include "Support/text/Section.h"
#include "programs/formats/Markup.h"

namespace vemra {

class HitStyle;

// A section that prints its text with a style around each marked word, or marked part of a
// compound. Punctuation around a marked compound stays outside. Its highlight count is the number
// of hits so far: the next one gets that number plus 1. Markup within the text is written as it is,
// and neither a hit nor its links cross it: a hit is parted, and a link of the document ends before
// a hit and begins anew within it and after it.
class MarkedSection : public TavoSection {
 public:
  // style is a loan for the life of the section; output and pack as for TavoSection.
  MarkedSection(TavoOutput* output, const std::string& contents, const TavoLangPack* pack,
                const HitStyle& style);
  // A copy of a section with its marks, to be printed in a style.
  MarkedSection(const TavoSection& section, const HitStyle& style);

  void SetMarkup(SectionMarkup markup) { markup_ = std::move(markup); }
  void MarkContents() override;

 private:
  const HitStyle& style_;
  SectionMarkup markup_;
};

}  // namespace vemra
