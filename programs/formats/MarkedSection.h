#pragma once

#include <string>

#include "Support/text/Section.h"

namespace vemra {

class HitStyle;

// A section that prints its text with a style around each marked word, or marked part of a
// compound. Punctuation around a marked compound stays outside. Its highlight count is the number
// of hits so far: the next one gets that number plus 1.
class MarkedSection : public TavoSection {
 public:
  // style is a loan for the life of the section; output and pack as for TavoSection.
  MarkedSection(TavoOutput* output, const std::string& contents, const TavoLangPack* pack,
                const HitStyle& style);
  // A copy of a section with its marks, to be printed in a style.
  MarkedSection(const TavoSection& section, const HitStyle& style);

  void MarkContents() override;

 private:
  const HitStyle& style_;
};

}  // namespace vemra
