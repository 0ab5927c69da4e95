// How a section cuts its contents into items: by table where nothing is overridden, else by
// joining what CreateWord returns. Both give the same items.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <utility>

#include "Support/text/Section.h"

namespace vemra {

namespace {

// A maximal run of characters of one class.
struct Run {
  int start;
  int end;
  TavoWord::WordType type;  // kUnknown, and nothing in it, at the end of the text
  int seen;                 // the ByteClass bits of its characters; none for a word
};

// Gives the runs of a text one after the other. A branch at the end of every run would be
// mispredicted more often than not, so the ends are found in whole blocks: as bits, where the type
// of a character is not that of the one before it.
class RunScanner {
 public:
  RunScanner(const std::string& text, const ByteClassTable& classes)
      : text_(reinterpret_cast<const unsigned char*>(text.data())),
        size_(static_cast<int>(text.size())),
        classes_(classes) {
    NextStart();  // where the text begins
  }

  Run Next() {
    const int start = end_;
    if (start == size_) return {start, start, TavoWord::kUnknown, 0};
    end_ = NextStart();
    const int first = classes_[text_[start]];
    const auto type = static_cast<TavoWord::WordType>(first & ByteClass::kTypeMask);
    return {start, end_, type, type == TavoWord::kWord ? 0 : SeenWithin(start)};
  }

 private:
  static constexpr int kBlock = 64;  // characters
  static constexpr int kStep = 8;

  // The start of the next run; the end of the text behind the last one.
  int NextStart() {
    while (starts_ == 0) {
      if (nextBlock_ >= size_) return size_;
      FindStarts();
    }
    const int start = nextBlock_ - kBlock + std::countr_zero(starts_);
    starts_ &= starts_ - 1;
    return start;
  }

  void FindStarts() {
    unsigned char types[kBlock + 1];
    types[0] = lastType_;
    const int count = std::min(kBlock, size_ - nextBlock_);
    for (int i = 0; i < count; ++i) {
      types[i + 1] = classes_[text_[nextBlock_ + i]] & ByteClass::kTypeMask;
    }
    std::fill(types + count + 1, std::end(types), types[count]);
    lastType_ = types[count];
    starts_ = 0;
    for (int i = 0; i < kBlock; i += kStep) starts_ |= Differences(types + i) << i;
    nextBlock_ += kBlock;
  }

  // A bit for each of eight types that differs from the one before it.
  static std::uint64_t Differences(const unsigned char* types) {
    std::uint64_t before = 0;
    std::uint64_t here = 0;
    std::memcpy(&before, types, kStep);
    std::memcpy(&here, types + 1, kStep);
    const std::uint64_t differences = before ^ here;
    const std::uint64_t bits = (differences | differences >> 1) & 0x0101010101010101;
    return bits * 0x0102040810204080 >> 56;  // byte i goes to bit i
  }

  // The ByteClass bits, less the type, of the characters up to the run's end.
  int SeenWithin(int start) const {
    int seen = 0;
    for (int i = start; i < end_; ++i) seen |= classes_[text_[i]];
    return seen & ~ByteClass::kTypeMask;
  }

  const unsigned char* text_;
  int size_;
  const ByteClassTable& classes_;
  int end_ = 0;  // of the run given last
  int nextBlock_ = 0;
  std::uint64_t starts_ = 0;                       // in the block before the next one
  unsigned char lastType_ = ByteClass::kTypeMask;  // of no character of a text
};

constexpr std::size_t kFewParts = 16;

bool EndsWordRun(const Run& run) {
  return run.type >= TavoWord::kSpace;
}

bool EndsSentence(const TavoWord& item) {
  const TavoWord* last = &item;
  while (last->GetType() == TavoWord::kCompound) {
    last = last->GetLastWord();
    if (last == nullptr) return false;
  }
  return last->GetType() == TavoWord::kPunctuation &&
         last->GetText().find_first_of(".!?") != std::string_view::npos;
}

}  // namespace

TavoSection::WordType TavoSection::CharType(unsigned char c) {
  return static_cast<WordType>(pack_->GetByteClasses()[c] & ByteClass::kTypeMask);
}

std::optional<TavoWord> TavoSection::CreateWord(const char*& cursor, WordType& type) {
  if (*cursor == '\0') return std::nullopt;
  const char* const begin = cursor;
  const auto typeAt = [this](const char* at) { return CharType(static_cast<unsigned char>(*at)); };
  if (type == TavoWord::kUnknown) type = typeAt(cursor);
  const WordType own = type;
  // The first character belongs to the item in any case, so that every call moves on.
  do {
    type = typeAt(++cursor);
  } while (type == own && *cursor != '\0');
  return TavoWord::View(std::string_view(begin, static_cast<std::size_t>(cursor - begin)), own);
}

void TavoSection::ParseContents() {
  parsed_ = 1;
  if (contents_.empty()) return;
  DropItems();
  markedContents_.clear();
  marked_ = 0;
  // Text has an item for about three characters; a larger section grows to what it needs.
  constexpr std::size_t kMostReserved = 4096;
  items_.reserve(std::min(contents_.size() / 3 + 4, kMostReserved));
  words_.reserve(std::min(contents_.size() / 6 + 4, kMostReserved));
  if (typeid(*this) == *plainType_) {
    CutByTable();
  } else {
    CutByCreateWord();
  }
  LinkParts(0);
}

// A maximal stretch without white space is one item when it is one run, two items when it is two,
// and one compound when it is more.
void TavoSection::CutByTable() {
  RunScanner scanner(contents_, pack_->GetByteClasses());
  const auto append = [this](const Run& run) { AppendRun(run.start, run.end, run.type, run.seen); };
  Run run = scanner.Next();
  while (run.type != TavoWord::kUnknown) {
    const Run first = run;
    run = scanner.Next();
    if (EndsWordRun(first) || EndsWordRun(run)) {
      append(first);
      continue;
    }
    const Run second = run;
    run = scanner.Next();
    if (EndsWordRun(run)) {
      append(first);
      append(second);
      continue;
    }
    int count = 0;
    Run last = second;
    if (parts_.capacity() == 0) parts_.reserve(kFewParts);
    const auto appendPart = [&](const Run& part) {
      parts_.emplace_back(TavoWord::Key(), contents_.data() + part.start, part.start,
                          part.end - part.start, count, count, part.type);
      ++count;
    };
    appendPart(first);
    appendPart(second);
    for (; !EndsWordRun(run); run = scanner.Next()) {
      appendPart(run);
      last = run;
    }
    const int seen = last.type == TavoWord::kPunctuation ? last.seen : 0;
    AppendRun(first.start, last.end, TavoWord::kCompound, seen);
    items_.back().partCount_ = count;
  }
}

// seen: the bits that count for the ends of sentence and paragraph.
void TavoSection::AppendRun(int start, int end, WordType type, int seen) {
  const int itemNumber = GetItemsNumber();
  if (items_.size() == items_.capacity()) ReserveItems(start);
  if (type == TavoWord::kWord || type == TavoWord::kCompound) words_.push_back(itemNumber);
  items_.emplace_back(TavoWord::Key(), contents_.data() + start, start, end - start,
                      GetWordsNumber() - 1, itemNumber, type);
  if (type == TavoWord::kWord || seen == 0) return;
  const bool space = type == TavoWord::kSpace;
  CountBreaks(!space && (seen & ByteClass::kEndsSentence) != 0,
              space && (seen & ByteClass::kEndsLine) != 0 && breakOnNewLine_);
}

// Makes room for what the rest of the contents probably holds, judging by the part that is cut, so
// that a large section is not copied again and again while it grows.
void TavoSection::ReserveItems(int cut) {
  const std::size_t items = items_.size();
  const std::size_t expected =
      items * contents_.size() / static_cast<std::size_t>(std::max(cut, 1));
  items_.reserve(std::max(expected, items) + items / 8 + 16);
}

void TavoSection::CutByCreateWord() {
  const char* cursor = contents_.c_str();
  WordType type = TavoWord::kUnknown;
  std::optional<TavoWord> pending;
  for (;;) {
    const char* const begin = cursor;
    std::optional<TavoWord> item = CreateWord(cursor, type);
    if (!item || cursor == begin) break;
    item->length_ = static_cast<int>(cursor - begin);
    item->Place(begin, static_cast<int>(begin - contents_.c_str()));
    Combine(pending, std::move(*item));
  }
  Commit(pending);
}

void TavoSection::Combine(std::optional<TavoWord>& pending, TavoWord&& item) {
  if (!pending) {
    pending = std::move(item);
    return;
  }
  const bool bothInWord = pending->type_ != TavoWord::kSpace && item.type_ != TavoWord::kSpace;
  if (pending->type_ == item.type_ || bothInWord) {
    pending->Merge(std::move(item));
    return;
  }
  Commit(pending);
  pending = std::move(item);
}

void TavoSection::Commit(std::optional<TavoWord>& pending) {
  if (!pending) return;
  if (pending->type_ == TavoWord::kCompound && pending->partCount_ == 2) {
    // A word with its comma or full stop is not a compound.
    for (TavoWord& part : pending->TakeParts()) AppendItem(std::move(part));
  } else {
    AppendItem(std::move(*pending));
  }
  pending.reset();
}

// item looks at the contents already. Its parts go to the store, where LinkParts finds them.
void TavoSection::AppendItem(TavoWord&& item) {
  const bool endsSentence = EndsSentence(item);
  const bool endsParagraph = EndsParagraph(item);
  if (item.partCount_ > 0) {
    const int count = item.partCount_;
    std::vector<TavoWord> parts = item.TakeParts();
    parts_.insert(parts_.end(), std::make_move_iterator(parts.begin()),
                  std::make_move_iterator(parts.end()));
    item.partCount_ = count;
  }
  item.owned_.reset();
  items_.push_back(std::move(item));
  CountItem(items_.size() - 1, endsSentence, endsParagraph);
}

void TavoSection::CountItem(std::size_t index, bool endsSentence, bool endsParagraph) {
  TavoWord& item = items_[index];
  item.itemNumber_ = static_cast<int>(index);
  if (item.IsRealWord()) words_.push_back(item.itemNumber_);
  item.number_ = GetWordsNumber() - 1;
  CountBreaks(endsSentence, endsParagraph);
}

// The last item ends a sentence, or a sentence and a paragraph.
void TavoSection::CountBreaks(bool endsSentence, bool endsParagraph) {
  if (!endsSentence && !endsParagraph) return;
  const auto words = static_cast<unsigned>(words_.size());
  sentenceBreaks_.Add(words);
  if (!endsParagraph) return;
  paragraphBreaks_.Add(words);
  sentenceBreaksAtParagraph_ = sentenceBreaks_.GetCount();
}

void TavoSection::UncountLastItem() {
  // A paragraph's end that is taken back is only ever lengthened and counted again, which sets the
  // sentence breaks at it anew.
  const TavoWord& item = items_.back();
  const bool endsParagraph = EndsParagraph(item);
  if (endsParagraph) paragraphBreaks_.RemoveLast();
  if (endsParagraph || EndsSentence(item)) sentenceBreaks_.RemoveLast();
  if (item.IsRealWord()) words_.pop_back();
}

// Numbers the first itemCount items afresh; words and breaks are then theirs.
void TavoSection::Recount(std::size_t itemCount) {
  words_.clear();
  sentenceBreaks_.Clear();
  paragraphBreaks_.Clear();
  sentenceBreaksAtParagraph_ = 0;
  for (std::size_t i = 0; i < itemCount; ++i) {
    CountItem(i, EndsSentence(items_[i]), EndsParagraph(items_[i]));
  }
}

bool TavoSection::EndsParagraph(const TavoWord& item) const {
  return breakOnNewLine_ && item.GetType() == TavoWord::kSpace &&
         item.GetText().find_first_of("\n\r") != std::string_view::npos;
}

void TavoSection::PlaceItems() {
  int start = 0;
  for (TavoWord& item : items_) {
    item.Place(contents_.data() + start, start);
    start += item.length_;
  }
}

// Points the compounds from firstItem on at their parts in the store. Both are in the order of
// their offsets; parts that a compound has given up (RemoveWords) stay in the store between.
void TavoSection::LinkParts(std::size_t firstItem) {
  if (firstItem >= items_.size()) return;
  const auto startsBefore = [](const TavoWord& part, int start) { return part.start_ < start; };
  auto part =
      std::lower_bound(parts_.begin(), parts_.end(), items_[firstItem].start_, startsBefore);
  for (std::size_t i = firstItem; i < items_.size(); ++i) {
    TavoWord& item = items_[i];
    if (item.type_ != TavoWord::kCompound || item.owned_ || item.partCount_ == 0) continue;
    while (part->start_ < item.start_) ++part;
    item.parts_ = &*part;
    part += item.partCount_;
  }
}

}  // namespace vemra
