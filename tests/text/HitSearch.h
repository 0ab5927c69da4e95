#pragma once

#include <utility>
#include <vector>

#include "Support/definition/FieldList.h"
#include "Support/text/HighlightSearch.h"
#include "Support/text/Section.h"

namespace vemra::test {

// Marks "hit", at once or, holding the sections, at the end.
class HitSearch : public TavoHighlightSearch {
 public:
  bool late = false;
  CTavoFieldList asked;

  void MarkWords(TavoSection& section, const CTavoFieldList& fields) override {
    asked = fields;
    if (late) {
      section.Lock();
      held_.push_back(&section);
    } else {
      Mark(section);
    }
  }
  void Finish() override {
    for (TavoSection* section : std::exchange(held_, {})) {
      Mark(*section);
      section->UnLock();
    }
  }

 private:
  static void Mark(TavoSection& section) {
    for (TavoWord* word = section.GetFirstWord(); word; word = section.GetNextWord(word)) {
      if (word->GetText() == "hit") word->Mark();
    }
  }

  std::vector<TavoSection*> held_;
};

}  // namespace vemra::test
