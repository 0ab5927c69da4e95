#include "Support/text/MarkedRanges.h"

#include "Support/text/Section.h"

namespace vemra {

namespace {

void AddRanges(const TavoWord& word, std::vector<TavoTextRange>& ranges) {
  if (word.IsWholeMarked()) {
    const std::string_view stript = word.GetStriptView();
    const auto before = static_cast<int>(stript.data() - word.GetText().data());
    ranges.push_back(
        {.start = word.GetStart() + before, .length = static_cast<int>(stript.size())});
    return;
  }
  for (const TavoWord* part = word.GetFirstWord(); part != nullptr; part = word.GetNextWord(part)) {
    AddRanges(*part, ranges);
  }
}

}  // namespace

std::vector<TavoTextRange> GetMarkedRanges(TavoSection& section) {
  std::vector<TavoTextRange> ranges;
  const TavoWord* const items = section.GetFirstItem();
  for (int i = 0; i < section.GetItemsNumber(); ++i) {
    if (items[i].IsMarked()) AddRanges(items[i], ranges);
  }
  return ranges;
}

}  // namespace vemra
