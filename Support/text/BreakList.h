#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "Support/Export.h"

namespace vemra {

// The sentence or paragraph breaks of a section: for each end the number, within the section, of
// the first word after it. Ascending; a number stands as often as ends fall before its word.
class SUPPORT_API BreakList {
 public:
  void Add(unsigned word) { entries_.push_back(word); }
  void RemoveLast() { entries_.pop_back(); }
  void Clear() { entries_.clear(); }
  void Swap(BreakList& other) {
    entries_.swap(other.entries_);
    std::swap(hint_, other.hint_);
  }

  bool IsEmpty() const { return entries_.empty(); }
  int GetCount() const { return static_cast<int>(entries_.size()); }
  unsigned GetLast() const { return entries_.back(); }
  const std::vector<unsigned>& GetEntries() const { return entries_; }

  // The entries that are at most word; below 0 none. Takes time logarithmic in the distance from
  // the answer before: a walk over all words is linear. Used by one thread at a time.
  int CountUpTo(int word) const {
    return IsAnswer(hint_, word) ? static_cast<int>(hint_) : FindCountUpTo(word);
  }
  // The last entry that is at most word, or -1.
  int GetLastUpTo(int word) const {
    if (entries_.empty()) return -1;
    const int count = CountUpTo(word);
    return count == 0 ? -1 : static_cast<int>(entries_[static_cast<std::size_t>(count) - 1]);
  }

 private:
  bool IsAnswer(std::size_t count, int word) const {
    const auto isUpTo = [&](std::size_t i) { return static_cast<int>(entries_[i]) <= word; };
    return count <= entries_.size() && (count == 0 || isUpTo(count - 1)) &&
           (count == entries_.size() || !isUpTo(count));
  }
  int FindCountUpTo(int word) const;

  std::vector<unsigned> entries_;
  mutable std::size_t hint_ = 0;  // the last answer of CountUpTo
};

}  // namespace vemra
