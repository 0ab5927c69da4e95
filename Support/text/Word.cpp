#include "Support/text/Word.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vemra {

TavoWord::TavoWord(std::string_view text, WordType type) {
  owned_ = std::make_unique<Owned>();
  owned_->text = text;
  text_ = owned_->text.data();
  length_ = static_cast<int>(text.size());
  type_ = type;
}

TavoWord TavoWord::View(std::string_view text, WordType type) {
  return TavoWord(Key(), text.data(), 0, static_cast<int>(text.size()), 0, 0, type);
}

TavoWord::TavoWord(const TavoWord& other) : TavoWord(other.CopyLooking()) {
  if (length_ == 0) {
    text_ = "";
    return;
  }
  if (!owned_) owned_ = std::make_unique<Owned>();
  owned_->text = other.GetText();
  Place(owned_->text.data(), start_);
}

TavoWord& TavoWord::operator=(const TavoWord& other) {
  if (this != &other) *this = TavoWord(other);
  return *this;
}

TavoWord TavoWord::CopyLooking() const {
  TavoWord copy(Key(), text_, start_, length_, number_, itemNumber_, type_);
  copy.marked_ = marked_;
  if (partCount_ > 0) {
    std::vector<TavoWord> parts;
    parts.reserve(static_cast<std::size_t>(partCount_));
    for (int i = 0; i < partCount_; ++i) parts.push_back(parts_[i].CopyLooking());
    copy.SetParts(std::move(parts));
  }
  return copy;
}

int TavoWord::IsPartMarked() const {
  return std::any_of(parts_, parts_ + partCount_,
                     [](const TavoWord& part) { return part.IsMarked(); });
}

std::string_view TavoWord::GetStriptCompound() const {
  int first = 0;
  while (first < partCount_ && !parts_[first].IsRealWord()) ++first;
  int last = partCount_ - 1;
  while (last > first && !parts_[last].IsRealWord()) --last;
  if (first > last) return {};
  // The parts follow each other in the compound's text.
  const char* const begin = parts_[first].text_;
  const char* const end = parts_[last].text_ + parts_[last].length_;
  return std::string_view(begin, static_cast<std::size_t>(end - begin));
}

void TavoWord::RemoveWords() {
  partCount_ = 0;
  parts_ = nullptr;
  if (owned_) owned_->parts.clear();
}

void TavoWord::Place(const char* text, int start) {
  text_ = text;
  start_ = start;
  for (int i = 0; i < partCount_; ++i) {
    parts_[i].Place(text, start);
    text += parts_[i].length_;
    start += parts_[i].length_;
  }
}

std::vector<TavoWord> TavoWord::TakeParts() {
  std::vector<TavoWord> parts;
  if (type_ != kCompound) {
    parts.push_back(std::move(*this));
  } else if (owned_) {
    parts = std::move(owned_->parts);
  } else {
    parts.assign(std::make_move_iterator(parts_), std::make_move_iterator(parts_ + partCount_));
  }
  partCount_ = 0;
  parts_ = nullptr;
  return parts;
}

void TavoWord::SetParts(std::vector<TavoWord>&& parts) {
  if (!owned_) owned_ = std::make_unique<Owned>();
  owned_->parts = std::move(parts);
  parts_ = owned_->parts.data();
  partCount_ = static_cast<int>(owned_->parts.size());
}

void TavoWord::Merge(TavoWord&& next) {
  // Words that lie side by side in one text stay a look at it; others get a text of their own.
  const bool ownsText = owned_ && text_ == owned_->text.data();
  const bool adjacent = !ownsText && text_ + length_ == next.text_;
  std::string joined;
  if (!adjacent) joined.append(GetText()).append(next.GetText());
  const char* const text = text_;
  const int start = start_;
  const int length = length_ + next.length_;

  if (type_ == next.type_ && type_ != kCompound) {
    marked_ |= next.marked_;
  } else {
    JoinParts(std::move(next));
  }

  length_ = length;
  if (adjacent) {
    text_ = text;
    start_ = start;
    return;
  }
  if (!owned_) owned_ = std::make_unique<Owned>();
  owned_->text = std::move(joined);
  Place(owned_->text.data(), start);
}

void TavoWord::JoinParts(TavoWord&& next) {
  // A simple word takes its mark along as a part; the mark of a whole compound stays whole.
  const bool marked = (type_ == kCompound && marked_) || (next.type_ == kCompound && next.marked_);
  const int number = number_;
  const int itemNumber = itemNumber_;
  std::vector<TavoWord> parts = TakeParts();
  std::vector<TavoWord> added = next.TakeParts();

  auto from = added.begin();
  if (!parts.empty() && from != added.end() && parts.back().type_ == from->type_) {
    parts.back().Merge(std::move(*from));
    ++from;
  }
  const std::size_t renumberFrom = parts.size() == 1 ? 0 : parts.size();
  parts.insert(parts.end(), std::make_move_iterator(from), std::make_move_iterator(added.end()));
  for (std::size_t i = renumberFrom; i < parts.size(); ++i) {
    parts[i].number_ = parts[i].itemNumber_ = static_cast<int>(i);
  }

  type_ = kCompound;
  marked_ = marked ? 1 : 0;
  number_ = number;
  itemNumber_ = itemNumber;
  SetParts(std::move(parts));
}

}  // namespace vemra
