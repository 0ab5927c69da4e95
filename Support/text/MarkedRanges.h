#pragma once

#include <vector>

#include "Support/Export.h"
#include "Support/text/TextRange.h"

namespace vemra {

class TavoSection;

// What is to be highlighted in the contents of a section, in order: each marked word without the
// punctuation around it; of a compound that is not marked itself, its marked parts. Parses the
// section when need be.
SUPPORT_API std::vector<TavoTextRange> GetMarkedRanges(TavoSection& section);

}  // namespace vemra
