#pragma once

#include "Support/Export.h"

namespace vemra {

class CTavoFieldList;
class TavoSection;

// Decides which words of a document are highlighted; the program that knows the query and the
// index engine implements it. A search that cannot decide at once locks the section
// (TavoSection::Lock), so that its output waits, and unlocks it when its words are marked.
class SUPPORT_API TavoHighlightSearch {
 public:
  virtual ~TavoHighlightSearch() = default;
  // Marks the words of a parsed section that match. fields are those of the section together with
  // the fields that they are also indexed into. The section is a loan: it may be printed and gone
  // after the call, unless the search has locked it.
  virtual void MarkWords(TavoSection& section, const CTavoFieldList& fields) = 0;
  // The document has ended, or its parse was given up: marks what is still open and unlocks every
  // section that this search has locked.
  virtual void Finish() = 0;
};

}  // namespace vemra
