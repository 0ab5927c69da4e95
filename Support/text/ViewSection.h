#pragma once

#include <string>

#include "Support/Export.h"
#include "Support/text/Section.h"

namespace vemra {

// A section for a view: prints its text with the marks of ViewMarks.h around what GetMarkedRanges
// gives. Its highlight count is the number of hits so far.
class SUPPORT_API TavoViewSection : public TavoSection {
 public:
  // As for TavoSection.
  TavoViewSection(TavoOutput* output, std::string contents, const TavoLangPack* pack = nullptr);

  void MarkContents() override;
};

}  // namespace vemra
