#include "Support/text/Index.h"

#include <algorithm>
#include <charconv>

#include "Support/definition/FieldRule.h"
#include "Support/definition/FileINI.h"
#include "Support/foundation/Strings.h"
#include "Support/text/IndexingWrapper.h"
#include "Support/text/LangPack.h"
#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "Support/text/THWrapper.h"

namespace vemra {

namespace {

constexpr unsigned long kDataError = 3;
constexpr int kMinFetchedText = 512;
constexpr char kSortKeyEnd = 19;
constexpr char kEntryField = '#';  // between an entry's field number and its text
constexpr char kEntryMarker = '@';
constexpr const char* kEntryHere = "entry#here#";
constexpr std::size_t kShownDigits = 12;

// Words keep their places in the text, which the proximity operators ask for; expressions do not.
constexpr std::uint32_t kWordFlags = fieldrule::kProximity;
constexpr int kWhole = 0;
constexpr int kPart = 1;

// As strtoul into 32 bits: white space, a plus sign, digits up to any other character; no digits
// are 0. False for a minus sign or a larger number.
bool ReadSortNumber(const std::string& text, std::uint32_t& number) {
  const char* begin = text.c_str() + std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
  if (*begin == '-') return false;
  if (*begin == '+') ++begin;
  number = 0;
  return std::from_chars(begin, text.c_str() + text.size(), number).ec !=
         std::errc::result_out_of_range;
}

std::string TrimBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

}  // namespace

TavoIndex::TavoIndex(TavoTHWrapper& wrapper, TavoIndexingWrapper& engine)
    : TavoIndex(wrapper.GetFileINI(), engine) {}

TavoIndex::TavoIndex(CTavoFileINI& definitions, TavoIndexingWrapper& engine)
    : definitions_(definitions), engine_(engine) {}

TavoIndex::~TavoIndex() = default;

void TavoIndex::OnDocumentStart(const std::string& /*name*/) {
  paragraphCount_ = 0;
  sentenceCount_ = 0;
  // Left by a document whose parse was given up.
  sortKeys_.clear();
  sortFieldEnd_ = 0;
  ClearEntriesArray();
  definitions_.ClearTitles();
  engine_.newtxtno(0);
  engine_.addtext_newtext();
  engine_.fulllist_newtext();
  ++textCounter_;
}

void TavoIndex::OnDocumentEnd(TavoOutput* output, const TavoLangPack* pack) {
  SendSortKey();
  TreatEntries(output, pack);
  const std::string title = definitions_.MakeTitle();
  engine_.addhead(title.c_str(), static_cast<int>(title.size()));
  if (storesText_ && output != nullptr) SendText(*output);
}

void TavoIndex::IndexSection(TavoSection* section, const CTavoFieldList& fields, int /*reserved1*/,
                             int /*reserved2*/) {
  if (fields.IsEmpty()) return;
  const CTavoFieldList asking =
      FieldsWith(fields, fieldrule::kAltSort | fieldrule::kEntry | fieldrule::kExpressions);
  AddSortKeysAndEntries(*section, asking);
  POSITION first = fields.GetStartPosition();
  IndexWords(*section, fields.GetNextFieldno(first));
  IndexExpression(*section, FieldsWith(asking, fieldrule::kExpressions));
}

std::uint32_t TavoIndex::GetRules(int field) const {
  return definitions_.GetFieldRule(field);
}

CTavoFieldList TavoIndex::FieldsWith(const CTavoFieldList& fields, std::uint32_t rules) const {
  CTavoFieldList result;
  for (POSITION position = fields.GetStartPosition(); position != 0;) {
    const int field = fields.GetNextFieldno(position);
    if (GetRules(field) & rules) result.Set(field);
  }
  return result;
}

void TavoIndex::AddSortKeysAndEntries(TavoSection& section, const CTavoFieldList& fields) {
  const CTavoFieldList asking = FieldsWith(fields, fieldrule::kAltSort | fieldrule::kEntry);
  if (asking.IsEmpty()) return;
  const std::string text = section.GetTextContents(std::max(maxSortKeySize_, kMinFetchedText));
  for (POSITION position = asking.GetStartPosition(); position != 0;) {
    const int field = asking.GetNextFieldno(position);
    const CTavoField* const definition = definitions_.GetField(field);
    if (definition->HasFieldRule(fieldrule::kAltSort)) AddToSort(field, definition, text);
    if (definition->HasFieldRule(fieldrule::kEntry)) AddEntryString(field, text);
  }
}

void TavoIndex::IndexWords(TavoSection& section, int field) {
  const TavoWord* word = section.GetFirstWord();  // a parse of its own may set other contents
  folded_.Fold(section.GetContents(), *section.GetLangPack());
  for (; word != nullptr; word = section.GetNextWord(word)) {
    StartWord(section, *word);
    IndexFolded(*word, field, kWhole);
    if (word->GetType() == TavoWord::kCompound) IndexParts(*word, field);
  }
}

void TavoIndex::StartWord(const TavoSection& section, const TavoWord& word) {
  if (section.IsWordStartingParagraph(&word)) {
    engine_.fulllist_newparagraph();
    ++paragraphCount_;
    ++sentenceCount_;
  } else if (section.IsWordStartingSentence(&word)) {
    engine_.fulllist_newsentence();
    ++sentenceCount_;
  }
}

void TavoIndex::IndexParts(const TavoWord& compound, int field) {
  for (const TavoWord* part = compound.GetFirstWord(); part != nullptr;
       part = compound.GetNextWord(part)) {
    if (part->IsRealWord()) IndexFolded(*part, field, kPart);
  }
}

void TavoIndex::IndexExpression(TavoSection& section, const CTavoFieldList& fields) {
  if (fields.IsEmpty()) return;
  const std::string expression = section.MakeExpression();
  for (POSITION position = fields.GetStartPosition(); position != 0;) {
    const int field = fields.GetNextFieldno(position);
    IndexWord(expression.c_str(), field, GetRules(field) & ~kWordFlags, kPart);
  }
}

void TavoIndex::IndexFolded(const TavoWord& word, int field, int part) {
  folded_.WithWord(word.GetStriptView(),
                   [&](const char* folded) { IndexWord(folded, field, kWordFlags, part); });
}

void TavoIndex::IndexWord(const char* word, int field, std::uint32_t flags, int part) {
  engine_.doword_addword(word, field, flags, part);
}

void TavoIndex::IndexWord(std::uint32_t textno, const char* word, int field, std::uint32_t flags,
                          int part) {
  engine_.doword_addword(textno, word, field, flags, part);
}

void TavoIndex::AddToSort(int field, const CTavoField* definition, const std::string& text) {
  sortFieldEnd_ = std::max(sortFieldEnd_, field + 1);
  std::string& key = sortKeys_[field];
  if (definition->HasFieldRule(fieldrule::kNumField)) {
    if (key.empty()) AddNumberToSort(key, *definition, text);
    return;
  }
  const auto limit = static_cast<std::size_t>(maxSortKeySize_);
  if (key.size() < limit) key.append(text, 0, limit - key.size());
}

void TavoIndex::AddNumberToSort(std::string& key, const CTavoField& definition,
                                const std::string& text) {
  std::uint32_t number = 0;
  if (ReadSortNumber(text, number)) {
    key = std::to_string(number);
    // Padded to one length, numbers sort as text.
    const auto digits = static_cast<std::size_t>(maxSortKeySize_);
    if (key.size() < digits) key.insert(0, digits - key.size(), '0');
    return;
  }
  const std::string shown =
      text.size() > kShownDigits ? text.substr(0, kShownDigits) + "..." : text;
  ReportDataError("SORT: number " + shown + " is out of range (textno " +
                  std::to_string(engine_.textno) + ", field " + definition.GetName() + ")\n");
}

void TavoIndex::SendSortKey() {
  if (sortKeys_.empty()) return;
  std::string key;
  for (int field = 0; field < sortFieldEnd_; ++field) {
    const auto found = sortKeys_.find(field);
    if (found != sortKeys_.end()) key += found->second;
    key += kSortKeyEnd;
  }
  sortKeys_.clear();
  sortFieldEnd_ = 0;
  engine_.makesort_addkey(key.c_str());
}

void TavoIndex::AddEntryString(int field, const std::string& text) {
  std::string entry(text);
  entry = TrimBlanks(ReplaceOneOfChars(entry, "\n\r", ' '));
  const std::size_t marker = entry.find(kEntryMarker);
  if (marker == std::string::npos) {
    ReportDataError("Entry error - '@' not found: field=" + std::to_string(field) + " - string=<" +
                    text + ">\n");
    return;
  }
  std::string references = entry.substr(marker + 1);
  if (!references.empty()) {
    std::string errors;
    references = definitions_.MapFieldsToFieldno(references, errors);
    if (references.empty() && !errors.empty()) {
      ReportDataError(errors + "\n  see " + entry + "\n");
      return;
    }
  }
  entries_.push_back(std::to_string(field) + kEntryField + entry.substr(0, marker + 1) +
                     references);
}

std::string TavoIndex::GetEntryString(int i, int* field) const {
  if (i < 0 || i >= GetEntriesCount()) return {};
  const std::string& stored = entries_[static_cast<std::size_t>(i)];
  const std::size_t separator = stored.find(kEntryField);
  if (separator == std::string::npos) return {};
  std::from_chars(stored.data(), stored.data() + separator, *field);
  return stored.substr(separator + 1);
}

void TavoIndex::TreatEntries(TavoOutput* output, const TavoLangPack* pack) {
  for (int i = 0; i < GetEntriesCount(); ++i) TreatEntry(i, output, pack);
  ClearEntriesArray();
}

void TavoIndex::TreatEntry(int i, TavoOutput* output, const TavoLangPack* pack) {
  int field = 0;
  std::string text = GetEntryString(i, &field);
  const std::uint32_t textno = engine_.addentry(reinterpret_cast<unsigned char*>(text.data()));
  engine_.fulllist_newtext(textno);
  ReplaceChar(text, '|', ' ');
  const std::size_t marker = text.find(kEntryMarker);
  if (marker != std::string::npos) {
    IndexEntryWords(text.substr(0, marker), field, textno, output, pack);
  }
}

void TavoIndex::IndexEntryWords(const std::string& words, int field, std::uint32_t textno,
                                TavoOutput* output, const TavoLangPack* pack) {
  const std::uint32_t flags = GetRules(field);
  TavoSection section(output, words, pack);
  folded_.Fold(section.GetContents(), *section.GetLangPack());
  for (const TavoWord* word = section.GetFirstWord(); word != nullptr;
       word = section.GetNextWord(word)) {
    folded_.WithWord(word->GetStriptView(),
                     [&](const char* folded) { IndexWord(textno, folded, field, flags, kWhole); });
  }
  IndexWord(textno, kEntryHere, field, flags, kWhole);
}

void TavoIndex::SendText(TavoOutput& output) {
  output.TryPrintAll();
  const std::string& text = output.GetOutputBuffer();
  engine_.addtext(text.data(), static_cast<std::uint32_t>(text.size()));
}

void TavoIndex::ReportDataError(const std::string& message) const {
  engine_.AddMessage(message.c_str(), kDataError);
}

}  // namespace vemra
