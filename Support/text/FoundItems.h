#pragma once

#include <vector>

#include "Support/text/BreakList.h"
#include "Support/text/Word.h"

namespace vemra {

// What a parse finds in the contents of a section.
struct FoundItems {
  std::vector<TavoWord> items;
  std::vector<int> words;       // indices of the real words in items
  std::vector<TavoWord> parts;  // of all compounds of items, in order
  BreakList sentenceBreaks;
  BreakList paragraphBreaks;

  void Swap(FoundItems& other);
};

// Exchanges found for the empty memory that a section of this thread left behind. Most sections
// live until they are printed or indexed, and to get new memory for each takes as long as to fill
// it. A bounded amount is kept, until the program ends. Any thread may call.
void ExchangeForSpare(FoundItems& found);

}  // namespace vemra
