#include "programs/formats/ElementPath.h"

#include <algorithm>

#include "programs/formats/MarkupStack.h"

namespace vemra {

namespace {

constexpr std::uint16_t kTableParts = kGroupTable | kGroupRowGroup | kGroupRow | kGroupCell;

// What an end tag does not reach out of.
std::uint16_t ReachOfEndTag(const HtmlElement& element) {
  if ((element.group & kTableParts) != 0) return kGroupTable | kGroupContainer;
  const std::uint16_t reach = kGroupTable | kGroupCell | kGroupContainer;
  return (element.group & kGroupItem) != 0 ? reach | kGroupList : reach;
}

}  // namespace

void ElementPath::Clear() {
  CutTo(0);
}

void ElementPath::EndImplied(const HtmlElement& element) {
  if (open_.empty() || (open_.back().groups & element.closes) == 0) return;
  std::size_t keep = open_.size();
  for (std::size_t i = open_.size(); i-- > 0;) {
    const std::uint16_t group = open_[i].element->group;
    if ((group & element.closes) != 0) keep = i;
    if ((group & element.within) != 0) break;
  }
  CutTo(keep);
}

bool ElementPath::Open(const HtmlElement& element, std::string_view name, std::uint32_t hash) {
  if (open_.size() >= kMaxDepth) return false;
  const bool verbatim = IsVerbatim() || element.content == HtmlContent::kVerbatim;
  const auto start = static_cast<std::uint32_t>(text_.size());
  if (open_.size() < kMaxNamed) {
    text_ += '<';
    text_ += name;
    text_ += '>';
  }
  open_.push_back({&element, hash, start, verbatim, kNoGroup, 0});
  Enclose(open_.size() - 1);
  return true;
}

void ElementPath::Close(const HtmlElement& element, std::uint32_t hash) {
  const std::uint16_t reach = ReachOfEndTag(element);
  for (std::size_t i = open_.size(); i-- > 0;) {
    if (open_[i].element == &element && open_[i].hash == hash) {
      return element.boundary == HtmlBoundary::kInline ? Remove(i) : CutTo(i);
    }
    if ((open_[i].element->group & reach) != 0) return;
  }
}

bool ElementPath::IsOpen(const HtmlElement& element) const {
  return std::any_of(open_.begin(), open_.end(),
                     [&](const Entry& entry) { return entry.element == &element; });
}

void ElementPath::CutTo(std::size_t depth) {
  if (depth >= open_.size()) return;
  if (markup_ != nullptr) markup_->CutTo(depth);
  text_.resize(open_[depth].start);
  open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(depth), open_.end());
}

void ElementPath::Remove(std::size_t index) {
  if (markup_ != nullptr) markup_->Remove(index);
  const std::size_t next = index + 1;
  const std::uint32_t start = open_[index].start;
  const auto end =
      next < open_.size() ? open_[next].start : static_cast<std::uint32_t>(text_.size());
  text_.erase(start, end - start);
  open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(index));
  for (std::size_t i = index; i < open_.size(); ++i) {
    open_[i].start -= end - start;
    Enclose(i);
  }
}

// Finds out what the index-th entry takes over from the one around it.
void ElementPath::Enclose(std::size_t index) {
  Entry& entry = open_[index];
  entry.groups = entry.element->group;
  entry.pathHash = entry.hash;
  if (index == 0) return;
  const Entry& around = open_[index - 1];
  entry.groups |= around.groups;
  entry.pathHash += around.pathHash * 31;
}

}  // namespace vemra
