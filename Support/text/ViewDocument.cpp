#include "Support/text/ViewDocument.h"

#include <algorithm>
#include <utility>

namespace vemra {

namespace {

int StartOf(const TavoTextRange& range) {
  return range.start;
}

int StartOf(const TavoViewDocument::Link& link) {
  return link.range.start;
}

// The index of the last item that starts at or before a position, or -1.
template <typename Item>
int FindStarted(const std::vector<Item>& items, int position) {
  const auto next = std::partition_point(items.begin(), items.end(), [position](const Item& item) {
    return StartOf(item) <= position;
  });
  return static_cast<int>(next - items.begin()) - 1;
}

bool EndsParagraph(char c) {
  return c == '\n' || c == '\r' || c == '\f';
}

}  // namespace

TavoViewDocument::TavoViewDocument(int maxLength)
    : maxLength_(std::clamp(maxLength, 0, kLongestText)) {}

void TavoViewDocument::AppendText(std::string_view text) {
  const int start = GetLength();
  const auto room = static_cast<std::size_t>(maxLength_ - start);
  if (text.size() > room) {
    cut_ = 1;
    text = text.substr(0, room);
  }
  if (text.empty()) return;
  text_.append(text);
  AppendParagraphs(start);

  if (newLink_) {
    links_.push_back({.range = {.start = start}, .target = *std::exchange(newLink_, std::nullopt)});
    inLink_ = true;
  }
  if (std::exchange(newHit_, false)) {
    hits_.push_back({.start = start});
    inHit_ = true;
  }
  const int added = GetLength() - start;
  if (inLink_) links_.back().range.length += added;
  if (inHit_) hits_.back().length += added;
}

void TavoViewDocument::AppendParagraphs(int from) {
  for (int i = from; i < GetLength(); ++i) {
    const char c = text_[static_cast<std::size_t>(i)];
    if (!EndsParagraph(c)) continue;
    // The line feed of a pair ends what its carriage return has already ended.
    const bool ofPair = c == '\n' && i > 0 && text_[static_cast<std::size_t>(i) - 1] == '\r';
    if (ofPair) {
      paragraphs_.back() = i + 1;
    } else {
      paragraphs_.push_back(i + 1);
    }
  }
}

void TavoViewDocument::BeginLink(std::string target) {
  newLink_ = std::move(target);
}

void TavoViewDocument::EndLink() {
  newLink_.reset();
  inLink_ = false;
}

void TavoViewDocument::BeginHit() {
  newHit_ = true;
}

void TavoViewDocument::EndHit() {
  newHit_ = false;
  inHit_ = false;
}

void TavoViewDocument::Clear() {
  *this = TavoViewDocument(maxLength_);
}

std::string_view TavoViewDocument::GetText(const TavoTextRange& range) const {
  return std::string_view(text_).substr(static_cast<std::size_t>(range.start),
                                        static_cast<std::size_t>(range.length));
}

int TavoViewDocument::GetParagraphsNumber() const {
  const int ended = static_cast<int>(paragraphs_.size()) - 1;
  return paragraphs_.back() < GetLength() ? ended + 1 : ended;
}

TavoTextRange TavoViewDocument::GetParagraph(int index) const {
  const auto i = static_cast<std::size_t>(index);
  const int start = paragraphs_[i];
  if (i + 1 == paragraphs_.size()) return {.start = start, .length = GetLength() - start};
  int end = paragraphs_[i + 1] - 1;
  const char last = text_[static_cast<std::size_t>(end)];
  if (last == '\n' && end > start && text_[static_cast<std::size_t>(end) - 1] == '\r') --end;
  return {.start = start, .length = end - start};
}

int TavoViewDocument::EndsPage(int index) const {
  const auto next = static_cast<std::size_t>(index) + 1;
  if (next == paragraphs_.size()) return 0;
  return text_[static_cast<std::size_t>(paragraphs_[next]) - 1] == '\f' ? 1 : 0;
}

int TavoViewDocument::GetParagraphAt(int position) const {
  const auto next = std::upper_bound(paragraphs_.begin(), paragraphs_.end(), position);
  const int index = static_cast<int>(next - paragraphs_.begin()) - 1;
  return std::min(index, GetParagraphsNumber() - 1);
}

int TavoViewDocument::GetLinkAt(int position) const {
  const int index = FindStarted(links_, position);
  return index >= 0 && position < GetLink(index).range.GetEnd() ? index : -1;
}

int TavoViewDocument::GetHitAt(int position) const {
  const int index = FindStarted(hits_, position);
  return index >= 0 && position < GetHit(index).GetEnd() ? index : -1;
}

int TavoViewDocument::GetHitFrom(int position) const {
  int index = FindStarted(hits_, position);
  if (index < 0 || GetHit(index).start < position) ++index;
  return index < GetHitsNumber() ? index : -1;
}

int TavoViewDocument::GetHitBefore(int position) const {
  const int index = FindStarted(hits_, position);
  return index >= 0 && GetHit(index).GetEnd() > position ? index - 1 : index;
}

}  // namespace vemra
