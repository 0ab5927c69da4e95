#include "Support/text/BufferedOutput.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "Support/text/Section.h"

namespace vemra {

namespace {

constexpr std::size_t kInitialCapacity = 256;

}  // namespace

TavoBufferedOutput::TavoBufferedOutput() = default;

TavoBufferedOutput::~TavoBufferedOutput() = default;

int TavoBufferedOutput::IsEmpty() const {
  return buffer_.empty() && queue_.empty() ? 1 : 0;
}

void TavoBufferedOutput::ResetOutput() {
  buffer_.clear();
  queue_.clear();
  highlightCount_ = 0;
}

int TavoBufferedOutput::Close() {
  return TryPrintAll();
}

int TavoBufferedOutput::PrintString(const std::string& s) {
  return WriteToBuff(s.data(), s.size());
}

int TavoBufferedOutput::PrintSection(TavoSection* section) {
  if (section->IsContentsEmpty()) return 1;
  if (section->IsLocked()) return 0;
  section->SetInitialHighlightCount(highlightCount_);
  section->MarkContents();
  const std::string& marked = section->GetMarkedContents();
  if (!PrintString(marked.empty() ? section->GetContents() : marked)) return 0;
  // Only now: a section that could not be printed is marked again, with the same numbers.
  highlightCount_ = section->GetCurrentHighlightCount();
  return 1;
}

int TavoBufferedOutput::TryPrintThing(InternalItem* item) {
  switch (item->kind) {
    case InternalItem::kString:
      return PrintString(item->text);
    case InternalItem::kSection:
      return PrintSection(item->section);
    case InternalItem::kAnchor:
      break;
  }
  return 0;
}

int TavoBufferedOutput::WriteString(const std::string& s) {
  if (s.empty()) return 1;
  if (!queue_.empty() || !PrintString(s)) {
    queue_.push_back({.kind = InternalItem::kString, .text = s});
  }
  return 1;
}

int TavoBufferedOutput::WriteSection(TavoSection* section, int owned) {
  std::unique_ptr<TavoSection> owner(owned ? section : nullptr);
  if (!queue_.empty() || !PrintSection(section)) {
    queue_.push_back(
        {.kind = InternalItem::kSection, .section = section, .owner = std::move(owner)});
  }
  return 1;
}

int TavoBufferedOutput::TryPrintAll() {
  while (!queue_.empty()) {
    // Taken out first: whatever printing leads to sees a queue without the item.
    InternalItem item = std::move(queue_.front());
    queue_.pop_front();
    if (!TryPrintThing(&item)) {
      queue_.push_front(std::move(item));
      return 0;
    }
  }
  return 1;
}

int TavoBufferedOutput::InsertDelayedAnchor() {
  if (queue_.empty() && !anchorFlag_) return 0;
  queue_.push_back({.kind = InternalItem::kAnchor});
  return 1;
}

void TavoBufferedOutput::InsertTo(TavoBufferedOutput* target, int move) {
  if (target == this) return;
  target->WriteString(buffer_);
  target->queue_.insert(target->queue_.end(), queue_.begin(), queue_.end());
  target->highlightCount_ += highlightCount_;
  if (move) {
    std::string().swap(buffer_);
    queue_.clear();
    highlightCount_ = 0;
  }
  target->TryPrintAll();
}

int TavoBufferedOutput::WriteToBuff(const char* bytes, std::size_t n) {
  if (n == 0) return 1;
  try {
    if (n > buffer_.capacity() - buffer_.size()) {
      // Doubled by hand, since nothing else promises how a string grows.
      std::size_t capacity = std::max(buffer_.capacity(), kInitialCapacity);
      while (n > capacity - buffer_.size()) capacity *= 2;
      buffer_.reserve(capacity);
    }
    buffer_.append(bytes, n);
    return 1;
  } catch (const std::bad_alloc&) {
    return 0;
  } catch (const std::length_error&) {
    return 0;
  }
}

}  // namespace vemra
