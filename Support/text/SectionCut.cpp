// How a section cuts its contents into items: by table where nothing is overridden, else by
// joining what CreateWord returns. Both give the same items.

#include <algorithm>
#include <iterator>
#include <utility>

#include "Support/text/RunScanner.h"
#include "Support/text/Section.h"

namespace vemra {

namespace {

using Run = RunScanner::Run;

bool IsInWord(const Run& run) {
  return run.type < TavoWord::kSpace;
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
  if (found_.items.capacity() == 0) ExchangeForSpare(found_);
  if (typeid(*this) == *plainType_) {
    CutByTable();
  } else {
    CutByCreateWord();
    LinkParts(0);
  }
}

// A maximal stretch without white space is one item when it is one run, two items when it is two,
// and one compound when it is more.
void TavoSection::CutByTable() {
  RunScanner scanner(contents_, pack_->GetByteClasses());
  const TavoWord* const partsBefore = found_.parts.data();
  Run first = scanner.Next();
  Run next = scanner.Next();
  for (int itemNumber = 0; first.type != TavoWord::kUnknown; ++itemNumber) {
    Run last = first;
    int parts = 0;
    Run after = scanner.Next();
    if (IsInWord(first) && IsInWord(next) && IsInWord(after)) {
      AppendPart(first.start, next.start, first.type, parts++);
      for (; IsInWord(next); next = after, after = scanner.Next()) {
        AppendPart(next.start, after.start, next.type, parts++);
        last = next;
      }
    }
    AppendCut(first.start, next.start, parts == 0 ? first.type : TavoWord::kCompound, itemNumber);
    if (parts > 0) found_.items.back().SetParts(&found_.parts.back() - (parts - 1), parts);
    if (last.type != TavoWord::kWord) CountBreaksAfter(scanner, last.start, next.start, last.type);
    first = next;
    next = after;
  }
  if (found_.parts.data() != partsBefore) LinkParts(0);  // they moved when they grew
}

void TavoSection::AppendPart(int start, int end, WordType type, int index) {
  found_.parts.emplace_back(TavoWord::Key(), contents_.data() + start, start, end - start, index,
                            index, type);
}

void TavoSection::AppendCut(int start, int end, WordType type, int itemNumber) {
  if (type == TavoWord::kWord || type == TavoWord::kCompound) found_.words.push_back(itemNumber);
  if (found_.items.size() == found_.items.capacity()) ReserveItems(start);
  found_.items.emplace_back(TavoWord::Key(), contents_.data() + start, start, end - start,
                            GetWordsNumber() - 1, itemNumber, type);
}

void TavoSection::CountBreaksAfter(const RunScanner& scanner, int start, int end, WordType type) {
  const int seen = scanner.SeenWithin(start, end);
  const bool space = type == TavoWord::kSpace;
  CountBreaks(!space && (seen & ByteClass::kEndsSentence) != 0,
              space && (seen & ByteClass::kEndsLine) != 0 && breakOnNewLine_);
}

// Makes room for what the rest of the contents probably holds, judging by the part that is cut, so
// that a large section is not copied again and again while it grows.
void TavoSection::ReserveItems(int cut) {
  const std::size_t items = found_.items.size();
  const std::size_t expected =
      items * contents_.size() / static_cast<std::size_t>(std::max(cut, 1));
  found_.items.reserve(std::max(expected, items) + items / 8 + 16);
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
    found_.parts.insert(found_.parts.end(), std::make_move_iterator(parts.begin()),
                        std::make_move_iterator(parts.end()));
    item.partCount_ = count;
  }
  item.owned_.reset();
  found_.items.push_back(std::move(item));
  CountItem(found_.items.size() - 1, endsSentence, endsParagraph);
}

void TavoSection::CountItem(std::size_t index, bool endsSentence, bool endsParagraph) {
  TavoWord& item = found_.items[index];
  item.itemNumber_ = static_cast<int>(index);
  if (item.IsRealWord()) found_.words.push_back(item.itemNumber_);
  item.number_ = GetWordsNumber() - 1;
  CountBreaks(endsSentence, endsParagraph);
}

// The last item ends a sentence, or a sentence and a paragraph.
void TavoSection::CountBreaks(bool endsSentence, bool endsParagraph) {
  if (!endsSentence && !endsParagraph) return;
  const auto words = static_cast<unsigned>(found_.words.size());
  found_.sentenceBreaks.Add(words);
  if (!endsParagraph) return;
  found_.paragraphBreaks.Add(words);
  sentenceBreaksAtParagraph_ = found_.sentenceBreaks.GetCount();
}

void TavoSection::UncountLastItem() {
  // A paragraph's end that is taken back is only ever lengthened and counted again, which sets the
  // sentence breaks at it anew.
  const TavoWord& item = found_.items.back();
  const bool endsParagraph = EndsParagraph(item);
  if (endsParagraph) found_.paragraphBreaks.RemoveLast();
  if (endsParagraph || EndsSentence(item)) found_.sentenceBreaks.RemoveLast();
  if (item.IsRealWord()) found_.words.pop_back();
}

// Numbers the first itemCount items afresh; words and breaks are then theirs.
void TavoSection::Recount(std::size_t itemCount) {
  found_.words.clear();
  found_.sentenceBreaks.Clear();
  found_.paragraphBreaks.Clear();
  sentenceBreaksAtParagraph_ = 0;
  for (std::size_t i = 0; i < itemCount; ++i) {
    CountItem(i, EndsSentence(found_.items[i]), EndsParagraph(found_.items[i]));
  }
}

bool TavoSection::EndsParagraph(const TavoWord& item) const {
  return breakOnNewLine_ && item.GetType() == TavoWord::kSpace &&
         item.GetText().find_first_of("\n\r") != std::string_view::npos;
}

void TavoSection::PlaceItems() {
  int start = 0;
  for (TavoWord& item : found_.items) {
    item.Place(contents_.data() + start, start);
    start += item.length_;
  }
}

// Points the compounds from firstItem on at their parts in the store. Both are in the order of
// their offsets; parts that a compound has given up (RemoveWords) stay in the store between.
void TavoSection::LinkParts(std::size_t firstItem) {
  if (found_.parts.empty() || firstItem >= found_.items.size()) return;
  const auto startsBefore = [](const TavoWord& part, int start) { return part.start_ < start; };
  auto part = std::lower_bound(found_.parts.begin(), found_.parts.end(),
                               found_.items[firstItem].start_, startsBefore);
  for (std::size_t i = firstItem; i < found_.items.size(); ++i) {
    TavoWord& item = found_.items[i];
    if (item.type_ != TavoWord::kCompound || item.owned_ || item.partCount_ == 0) continue;
    while (part->start_ < item.start_) ++part;
    item.SetParts(&*part, item.partCount_);
    part += item.partCount_;
  }
}

}  // namespace vemra
