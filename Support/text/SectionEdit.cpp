// Copying, cutting and joining sections.

#include <algorithm>
#include <utility>

#include "Support/text/Section.h"

namespace vemra {

void TavoSection::CopySection(const TavoSection& other, int mode) {
  output_ = other.output_;
  pack_ = other.pack_;
  wordPosition_ = other.wordPosition_;
  sentencePosition_ = other.sentencePosition_;
  paragraphPosition_ = other.paragraphPosition_;
  wordInSentence_ = other.wordInSentence_;
  wordInParagraph_ = other.wordInParagraph_;
  sentenceInParagraph_ = other.sentenceInParagraph_;
  breakOnNewLine_ = other.breakOnNewLine_;
  highlightCount_ = other.highlightCount_;
  if (mode == kCopyText || !other.parsed_) {
    SetContents(other.contents_);
    marked_ = 0;
    return;
  }
  SetContents(std::string());
  for (TavoWord& item : CopyItems(other, mode)) AppendItem(std::move(item));
  LinkParts(0);
  markedContents_ = other.markedContents_;
  marked_ = other.marked_;
  parsed_ = 1;
}

std::optional<TavoWord> TavoSection::CreateCopyWord(const TavoWord* word, std::string& text,
                                                    int /*mode*/) {
  text += word->GetText();
  return word->CopyLooking();
}

// Appends the text of other's items to the contents and returns the copies, which look at it.
std::vector<TavoWord> TavoSection::CopyItems(const TavoSection& other, int mode) {
  std::vector<TavoWord> copies;
  copies.reserve(other.found_.items.size());
  const char* const before = contents_.data();
  const std::size_t oldLength = contents_.size();
  for (const TavoWord& item : other.found_.items) {
    const std::size_t start = contents_.size();
    std::optional<TavoWord> copy = CreateCopyWord(&item, contents_, mode);
    if (!copy) continue;
    copy->length_ = static_cast<int>(contents_.size() - start);
    copies.push_back(std::move(*copy));
  }
  if (contents_.data() != before) PlaceItems();
  std::size_t start = oldLength;
  for (TavoWord& copy : copies) {
    copy.Place(contents_.data() + start, static_cast<int>(start));
    start += static_cast<std::size_t>(copy.length_);
  }
  return copies;
}

void TavoSection::AddSection(TavoSection& other, int separate) {
  if (&other == this) {
    TavoSection copy(other);
    AddSection(copy, separate);
    return;
  }
  ParseIfNeeded();
  other.ParseIfNeeded();
  if (other.found_.items.empty()) return;
  markedContents_.clear();

  const bool apart = found_.items.empty() || found_.items.back().type_ == TavoWord::kSpace ||
                     other.found_.items.front().type_ == TavoWord::kSpace;
  if (separate && !apart) {
    TavoSection blank(nullptr, " ", pack_);
    AddSection(blank, 0);
  }
  const int seam = GetContentsLength();
  std::vector<TavoWord> added = CopyItems(other, kCopyItems);
  const TavoWord* const oldParts = found_.parts.data();
  std::optional<TavoWord> pending;
  std::vector<TavoWord> tail = TakeBackTail(seam);
  const std::size_t firstChanged = found_.items.size();
  for (TavoWord& item : tail) Combine(pending, std::move(item));
  for (TavoWord& item : added) Combine(pending, std::move(item));
  Commit(pending);
  LinkParts(found_.parts.data() == oldParts ? firstChanged : 0);
}

// Takes the items off the end that what follows at the seam may join: the last white space, or all
// that stands without white space between.
std::vector<TavoWord> TavoSection::TakeBackTail(int seam) {
  std::vector<TavoWord> tail;
  // A CreateWord that stopped early leaves text without items, which parts the two sides.
  if (found_.items.empty() || found_.items.back().GetEnd() + 1 != seam) return tail;
  const bool space = found_.items.back().type_ == TavoWord::kSpace;
  while (!found_.items.empty() && (found_.items.back().type_ == TavoWord::kSpace) == space) {
    UncountLastItem();
    TavoWord item = std::move(found_.items.back());
    found_.items.pop_back();
    if (item.partCount_ > 0 && !item.owned_) {
      std::vector<TavoWord> parts = item.TakeParts();
      found_.parts.erase(found_.parts.end() - static_cast<std::ptrdiff_t>(parts.size()),
                         found_.parts.end());
      item.SetParts(std::move(parts));
    }
    tail.push_back(std::move(item));
  }
  std::reverse(tail.begin(), tail.end());
  return tail;
}

void TavoSection::CutStart(int n) {
  ParseIfNeeded();
  if (n < 1) return;
  std::size_t first = found_.items.size();
  if (n < GetWordsNumber()) {
    first = static_cast<std::size_t>(found_.words[static_cast<std::size_t>(n)]);
    while (first > 0 && found_.items[first - 1].type_ == TavoWord::kPunctuation) --first;
  }
  KeepItems(first, found_.items.size());
}

void TavoSection::CutEnd(int n) {
  ParseIfNeeded();
  if (n < 1) return;
  std::size_t last = 0;
  if (n < GetWordsNumber()) {
    last = static_cast<std::size_t>(
               found_.words[found_.words.size() - static_cast<std::size_t>(n) - 1]) +
           1;
    while (last < found_.items.size() && found_.items[last].type_ == TavoWord::kPunctuation) ++last;
  }
  KeepItems(0, last);
}

void TavoSection::KeepItems(std::size_t first, std::size_t last) {
  // What goes at the front counts like a section before this one.
  Recount(first);
  const int wordInSentence = GetWordInSentenceAtEnd();
  const int wordInParagraph = GetWordInParagraphAtEnd();
  const int sentenceInParagraph = GetSentenceInParagraphAtEnd();
  wordPosition_ += GetWordsNumber();
  sentencePosition_ += found_.sentenceBreaks.GetCount();
  paragraphPosition_ += found_.paragraphBreaks.GetCount();
  wordInSentence_ = wordInSentence;
  wordInParagraph_ = wordInParagraph;
  sentenceInParagraph_ = sentenceInParagraph;

  const int begin = first < last ? found_.items[first].start_ : 0;
  const int end = first < last ? found_.items[last - 1].GetEnd() + 1 : 0;
  const auto startsBefore = [](const TavoWord& part, int start) { return part.start_ < start; };
  found_.parts.erase(std::lower_bound(found_.parts.begin(), found_.parts.end(), end, startsBefore),
                     found_.parts.end());
  found_.parts.erase(
      found_.parts.begin(),
      std::lower_bound(found_.parts.begin(), found_.parts.end(), begin, startsBefore));
  found_.items.erase(found_.items.begin() + static_cast<std::ptrdiff_t>(last), found_.items.end());
  found_.items.erase(found_.items.begin(),
                     found_.items.begin() + static_cast<std::ptrdiff_t>(first));
  LinkParts(0);

  contents_.resize(static_cast<std::size_t>(end));
  contents_.erase(0, static_cast<std::size_t>(begin));
  markedContents_.clear();
  PlaceItems();
  Recount(found_.items.size());
}

}  // namespace vemra
