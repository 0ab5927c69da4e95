#include "Support/text/BreakList.h"

#include <algorithm>

namespace vemra {

int BreakList::FindCountUpTo(int word) const {
  if (word < 0) return 0;
  const auto limit = static_cast<unsigned>(word);
  // Most questions lie close to the one before: go from the last answer in doubling steps, and
  // search only what they bracket.
  std::size_t low = std::min(hint_, entries_.size());
  std::size_t high = low;
  for (std::size_t step = 1; low > 0 && entries_[low - 1] > limit; step *= 2) {
    high = low - 1;
    low -= std::min(low, step);
  }
  for (std::size_t step = 1; high < entries_.size() && entries_[high] <= limit; step *= 2) {
    low = high + 1;
    high = std::min(high + step, entries_.size());
  }
  const auto first = entries_.begin();
  const auto answer = std::upper_bound(first + static_cast<std::ptrdiff_t>(low),
                                       first + static_cast<std::ptrdiff_t>(high), limit);
  hint_ = static_cast<std::size_t>(answer - first);
  return static_cast<int>(hint_);
}

}  // namespace vemra
