#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "programs/formats/Markup.h"

namespace vemra {

// The tags within the run that is being collected.
class RunMarkup {
 public:
  // A run begins within this link; what the last one left is forgotten.
  void Start(const OpenLink& link);
  // Tags that stand behind so many bytes of the run, white space that waits for its next word
  // included.
  void Add(std::size_t offset, std::vector<MarkupTag> tags);
  // Those of the first bytes of the run, which are dropped from it. Tags at their very end stand
  // with what follows.
  SectionMarkup TakeFirst(std::size_t bytes);
  SectionMarkup TakeAll() { return std::exchange(markup_, {}); }

 private:
  SectionMarkup markup_;
};

}  // namespace vemra
