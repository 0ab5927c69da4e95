#include "programs/formats/HtmlTokenizer.h"

#include <algorithm>

#include "programs/formats/HtmlElement.h"
#include "programs/formats/WhiteSpace.h"

namespace vemra {

namespace {

using ByteTable = std::array<bool, 256>;

// White space and the characters given.
constexpr ByteTable BlanksAnd(std::string_view others) {
  ByteTable table = kIsBlank;
  for (const char c : others) table[static_cast<unsigned char>(c)] = true;
  return table;
}

constexpr ByteTable kNameEnds = BlanksAnd("/><");
constexpr ByteTable kAttributeNameEnds = BlanksAnd("/>=");
constexpr ByteTable kValueEnds = BlanksAnd(">");
constexpr ByteTable kNoBlanks = [] {
  ByteTable table = kIsBlank;
  for (bool& member : table) member = !member;
  return table;
}();

bool Has(const ByteTable& table, char c) {
  return table[static_cast<unsigned char>(c)];
}

// Reads attributes from a place of a page. Not the tokenizer itself: a position that nothing else
// can see stays in a register.
class AttributeReader {
 public:
  AttributeReader(std::string_view page, std::size_t position, HtmlQuotesLeft& quotes)
      : page_(page), position_(position), quotes_(quotes) {}

  std::size_t GetPosition() const { return position_; }
  bool IsAtEnd() const { return position_ >= page_.size(); }
  char Peek() const { return IsAtEnd() ? '\0' : page_[position_]; }
  void Skip() { ++position_; }
  void SkipBlanks() { SkipTo(kNoBlanks); }

  std::string_view TakeName() {
    const std::size_t start = position_;
    if (Peek() == '=') Skip();  // a stray "=" begins a name
    SkipTo(kAttributeNameEnds);
    return From(start);
  }

  // A value whose closing quote is missing from the rest of the page ends at the tag's end.
  std::string_view TakeValue() {
    SkipBlanks();
    if (Peek() != '=') return {};
    Skip();
    SkipBlanks();
    const char first = Peek();
    if (first == '"') return TakeQuoted(first, quotes_.hasQuote);
    if (first == '\'') return TakeQuoted(first, quotes_.hasApostrophe);
    return TakeUnquoted();
  }

 private:
  std::string_view TakeQuoted(char quote, bool& isLeft) {
    Skip();
    const std::size_t end = isLeft ? page_.find(quote, position_) : std::string_view::npos;
    isLeft = end != std::string_view::npos;
    if (!isLeft) return TakeUnquoted();
    const std::string_view value = page_.substr(position_, end - position_);
    position_ = end + 1;
    return value;
  }

  std::string_view TakeUnquoted() {
    const std::size_t start = position_;
    SkipTo(kValueEnds);
    return From(start);
  }

  void SkipTo(const ByteTable& table) {
    while (!IsAtEnd() && !Has(table, page_[position_])) ++position_;
  }
  std::string_view From(std::size_t start) const { return page_.substr(start, position_ - start); }

  std::string_view page_;
  std::size_t position_;
  HtmlQuotesLeft& quotes_;
};

}  // namespace

HtmlTokenizer::HtmlTokenizer(std::string_view page)
    : page_(page), tagsEnd_(page.rfind('>') + 1) {}  // 0 when there is none

// Whether a tag, or what is skipped like one, begins here.
inline bool HtmlTokenizer::IsMarkup(std::size_t position) const {
  if (page_[position] != '<' || position >= tagsEnd_) return false;
  const char next = At(position + 1);
  return IsAsciiAlpha(next) || next == '/' || next == '!' || next == '?';
}

HtmlToken HtmlTokenizer::Next() {
  while (position_ < page_.size()) {
    if (page_[position_] != '<' || !IsMarkup(position_)) return TakeText();
    const char next = At(position_ + 1);
    if (IsAsciiAlpha(next) || (next == '/' && IsAsciiAlpha(At(position_ + 2)))) return TakeTag();
    SkipMarkup();
  }
  return {HtmlToken::kEnd, {}};
}

HtmlToken HtmlTokenizer::TakeText() {
  const std::size_t start = position_;
  do {
    position_ = std::min(page_.find('<', position_ + 1), page_.size());
  } while (position_ < page_.size() && !IsMarkup(position_));
  return {HtmlToken::kText, page_.substr(start, position_ - start)};
}

HtmlToken HtmlTokenizer::TakeTag() {
  const bool isEnd = page_[position_ + 1] == '/';
  position_ += isEnd ? 2 : 1;
  TakeName();
  const bool isEmptyElement = TakeAttributes();
  return {isEnd ? HtmlToken::kEndTag : HtmlToken::kStartTag,
          std::string_view(name_.data(), nameLength_), nameHash_, isEmptyElement};
}

void HtmlTokenizer::SkipMarkup() {
  const std::string_view rest = page_.substr(position_);
  if (rest.starts_with("<!--")) {
    SkipComment();
  } else if (rest.starts_with("<![CDATA[") && hasDataEnd_) {
    SkipData();
  } else {
    SkipPast(">");
  }
}

// Ends at the next ">" when it has no end of its own.
void HtmlTokenizer::SkipData() {
  hasDataEnd_ = page_.find("]]>", position_) != std::string_view::npos;
  SkipPast(hasDataEnd_ ? "]]>" : ">");
}

// An unclosed comment reaches to the end, as in browsers.
void HtmlTokenizer::SkipComment() {
  const std::string_view content = page_.substr(position_ + 4);
  if (content.starts_with(">") || content.starts_with("->")) return SkipPast(">");
  position_ += 4;
  std::size_t dashes = page_.find("--", position_);
  while (dashes != std::string_view::npos) {
    if (At(dashes + 2) == '>' || (At(dashes + 2) == '!' && At(dashes + 3) == '>')) {
      position_ = dashes;
      return SkipPast(">");
    }
    dashes = page_.find("--", dashes + 1);
  }
  TakeRest();
}

void HtmlTokenizer::SkipPast(std::string_view terminator) {
  const std::size_t found = page_.find(terminator, position_);
  position_ = found == std::string_view::npos ? page_.size() : found + terminator.size();
}

// Also ends before a "<": a tag whose ">" was forgotten. A ">" there is, since tags begin before
// the last one.
void HtmlTokenizer::TakeName() {
  std::size_t length = 0;
  std::uint32_t hash = kNameHashStart;
  std::size_t end = position_;
  for (; !Has(kNameEnds, page_[end]); ++end) {
    if (length == kMaxName) continue;
    const char c = ToAsciiLower(page_[end]);
    name_[length++] = c;
    hash = AddToNameHash(hash, c);
  }
  position_ = end;
  nameLength_ = length;
  nameHash_ = hash;
}

// Returns whether a slash ends the tag.
bool HtmlTokenizer::TakeAttributes() {
  attributes_.clear();
  if (page_[position_] == '>') {  // as in most tags
    ++position_;
    return false;
  }
  AttributeReader reader(page_, position_, quotes_);
  bool slash = false;
  while (!reader.IsAtEnd()) {
    reader.SkipBlanks();
    const char c = reader.Peek();
    if (c == '<' && attributes_.empty()) break;
    if (c == '>') {
      reader.Skip();
      break;
    }
    slash = c == '/';
    if (slash) {
      reader.Skip();
    } else if (const std::string_view name = reader.TakeName(); !name.empty()) {
      attributes_.push_back({name, reader.TakeValue()});
    }
  }
  position_ = reader.GetPosition();
  return slash;
}

bool HtmlTokenizer::IsContentEnd(std::size_t position, std::string_view name) const {
  const char after = At(position + 2 + name.size());
  return EqualsNoCase(page_.substr(position + 2, name.size()), name) &&
         (IsBlank(after) || after == '/' || after == '>');
}

// Whether an end tag is left is searched for once a name, so that a page full of unclosed start
// tags takes no more than linear time.
std::string_view HtmlTokenizer::TakeContent(std::string_view name) {
  if (std::find(unclosed_.begin(), unclosed_.end(), name) != unclosed_.end()) return {};
  std::size_t end = page_.find("</", position_);
  while (end != std::string_view::npos && !IsContentEnd(end, name)) end = page_.find("</", end + 2);
  if (end == std::string_view::npos) {
    unclosed_.push_back(name);
    return {};
  }
  const std::string_view content = page_.substr(position_, end - position_);
  position_ = end;
  return content;
}

}  // namespace vemra
