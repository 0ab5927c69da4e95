#include "Support/text/Section.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Support/text/Output.h"

namespace vemra {

namespace {

constexpr std::size_t kMostSpare = std::size_t{1} << 15;  // items

}  // namespace

TavoSection::TavoSection() : TavoSection(nullptr, std::string()) {}

TavoSection::TavoSection(TavoOutput* output, std::string contents, const TavoLangPack* pack)
    : output_(output),
      pack_(pack != nullptr ? pack : TavoLangPack::GetDefault()),
      plainType_(&typeid(TavoSection)) {
  SetContents(std::move(contents));
}

TavoSection::TavoSection(TavoOutput* output, const char* contents, const TavoLangPack* pack)
    : TavoSection(output, std::string(contents != nullptr ? contents : ""), pack) {}

TavoSection::TavoSection(const TavoSection& other) : TavoSection() {
  TavoSection::CopySection(other, kCopyItems);
}

TavoSection& TavoSection::operator=(const TavoSection& other) {
  if (this != &other) CopySection(other, kCopyItems);
  return *this;
}

TavoSection::~TavoSection() {
  // Large memory is not kept, and what never had any has none to give.
  const std::size_t most = std::max(found_.items.capacity(), found_.parts.capacity());
  if (most == 0 || most > kMostSpare) return;
  DropItems();
  ExchangeForSpare(found_);
}

void TavoSection::SetContents(std::string contents) {
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  const std::size_t end = std::min(contents.find('\0'), kMost);
  if (end < contents.size()) contents.resize(end);
  contents_ = std::move(contents);
  markedContents_.clear();
  Clear();
}

void TavoSection::Clear() {
  DropItems();
  parsed_ = 0;
}

void TavoSection::DropItems() {
  if (found_.items.empty() && found_.parts.empty()) return;  // as when it is new
  found_.words.clear();
  found_.items.clear();
  found_.parts.clear();
  Recount(0);
}

void TavoSection::SetBreakOnNewLine(int on) {
  if (breakOnNewLine_ == on) return;
  breakOnNewLine_ = on;
  Recount(found_.items.size());
}

void TavoSection::MarkContents() {
  markedContents_ = contents_;
}

void TavoSection::OnFree() {
  if (output_ != nullptr) {
    output_->SectionFreed();
  } else {
    delete this;
  }
}

void TavoSection::UnLock() {
  if (lockCount_ > 0) --lockCount_;
  if (lockCount_ < 1) OnFree();
}

TavoWord* TavoSection::GetLastWord() {
  return found_.words.empty() ? nullptr : GetWordAt(GetWordsNumber() - 1);
}

TavoWord* TavoSection::GetLastItem() {
  return found_.items.empty() ? nullptr : &found_.items.back();
}

void TavoSection::MarkAllWords() {
  for (TavoWord* word = GetFirstWord(); word != nullptr; word = GetNextWord(word)) word->Mark();
  marked_ = 1;
}

int TavoSection::GetFirstMarked() {
  for (TavoWord* word = GetFirstWord(); word != nullptr; word = GetNextWord(word)) {
    if (word->IsMarked()) return word->GetNumber();
  }
  return -1;
}

std::string TavoSection::GetPartMarkContents(int firstWord, int lastWord) {
  ParseIfNeeded();
  const int first = std::max(firstWord, 0);
  const int last = std::min(lastWord, GetWordsNumber() - 1);
  if (first > last) return {};
  const int start = GetWordAt(first)->GetStart();
  const int end = GetWordAt(last)->GetEnd() + 1;
  return contents_.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
}

std::string TavoSection::GetTextContents(int maxLength) {
  if (parsed_) return MakeWordFromContents(-1, maxLength);
  return maxLength < 0 ? contents_ : contents_.substr(0, static_cast<std::size_t>(maxLength));
}

std::string TavoSection::MakeWordFromContents(int maxWords, int maxLength, int* wordsTaken) {
  if (!contents_.empty()) ParseIfNeeded();
  std::string result;
  int taken = 0;
  bool pendingSpace = false;
  for (const TavoWord& item : found_.items) {
    if (maxWords >= 0 && taken >= maxWords) break;
    if (item.GetType() == TavoWord::kSpace) {
      pendingSpace = true;
      continue;
    }
    const bool joined = pendingSpace && !result.empty();
    pendingSpace = false;
    const std::size_t length = item.GetText().size() + (joined ? 1 : 0);
    // A single first item may fill the limit, joined text stays below it: keys are stored so.
    if (maxLength >= 0 && result.size() + length >= static_cast<std::size_t>(maxLength)) {
      if (result.empty()) {
        result = item.GetText().substr(0, static_cast<std::size_t>(maxLength));
        if (item.IsRealWord()) ++taken;
      }
      break;
    }
    if (joined) result += ' ';
    result += item.GetText();
    if (item.IsRealWord()) ++taken;
  }
  if (wordsTaken != nullptr) *wordsTaken = taken;
  return result;
}

std::string TavoSection::MakeExpression(int* wordsTaken) {
  std::string expression = MakeWordFromContents(16, 255, wordsTaken);
  pack_->ToIndex(expression);
  std::replace(expression.begin(), expression.end(), ' ', DICTIONARY_NOBREAKSPACE);
  if (expression.find(DICTIONARY_NOBREAKSPACE) == std::string::npos) {
    expression += DICTIONARY_NOBREAKSPACE;
  }
  return expression;
}

}  // namespace vemra
