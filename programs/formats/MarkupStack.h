#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "programs/formats/Markup.h"

namespace vemra {

// The tags that are open in a page that is being written: one entry for every element that is open
// in the document, also for those of which nothing is written. What it writes is well nested
// whatever the document does, every start tag gets its end tag, and links do not nest.
class MarkupStack {
 public:
  // Tags beyond these depths are not written: what goes on after an interruption is written again,
  // so that depth multiplies the length of a page.
  static constexpr std::size_t kMaxDepth = 64;
  static constexpr int kMaxDepthInLink = 8;

  // An element begins; tag is empty when nothing is written of it.
  void Open(MarkupTag tag);
  // Ends the elements from the depth-th on.
  void CutTo(std::size_t depth);
  // Ends the index-th alone: those inside it go on.
  void Remove(std::size_t index);

  std::size_t GetDepth() const { return open_.size(); }
  // What was written since the last call.
  std::vector<MarkupTag> Take() { return std::exchange(written_, {}); }
  const OpenLink& GetOpenLink() const { return link_; }

 private:
  bool IsWritten(const MarkupTag& tag) const;
  void Write(MarkupTag tag);
  void WriteEnd(const MarkupTag& start);
  void WriteAgain(const MarkupTag& start);

  std::vector<MarkupTag> open_;
  std::vector<MarkupTag> written_;
  OpenLink link_;
};

}  // namespace vemra
