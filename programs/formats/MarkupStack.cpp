#include "programs/formats/MarkupStack.h"

namespace vemra {

void MarkupStack::Open(MarkupTag tag) {
  if (!IsWritten(tag)) tag = {};
  if (!tag.text.empty()) Write(tag);
  open_.push_back(std::move(tag));
}

bool MarkupStack::IsWritten(const MarkupTag& tag) const {
  if (open_.size() >= kMaxDepth || link_.GetDepth() >= kMaxDepthInLink) return false;
  return !tag.isLink || link_.GetDepth() == 0;
}

void MarkupStack::CutTo(std::size_t depth) {
  while (open_.size() > depth) {
    WriteEnd(open_.back());
    open_.pop_back();
  }
}

// Tags that cross in the document are parted: <b>1<i>2</b>3</i> gives <b>1<i>2</i></b><i>3</i>.
void MarkupStack::Remove(std::size_t index) {
  if (index >= open_.size()) return;
  const bool isWritten = open_[index].kind == MarkupTag::kStart;
  if (isWritten) {
    for (std::size_t i = open_.size(); i-- > index;) WriteEnd(open_[i]);
  }
  open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(index));
  if (!isWritten) return;
  for (std::size_t i = index; i < open_.size(); ++i) WriteAgain(open_[i]);
}

void MarkupStack::WriteEnd(const MarkupTag& start) {
  if (start.kind != MarkupTag::kStart) return;
  MarkupTag tag;
  tag.kind = MarkupTag::kEnd;
  tag.text = start.end;
  Write(std::move(tag));
}

void MarkupStack::WriteAgain(const MarkupTag& start) {
  if (start.kind != MarkupTag::kStart) return;
  MarkupTag tag = start;
  tag.text = start.again;
  Write(std::move(tag));
}

void MarkupStack::Write(MarkupTag tag) {
  link_.Follow(tag);
  written_.push_back(std::move(tag));
}

}  // namespace vemra
