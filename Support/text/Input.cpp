#include "Support/text/Input.h"

#include <algorithm>
#include <utility>

#include "Support/foundation/Ascii.h"

namespace vemra {

namespace {

// A set of bytes for quick questions.
class ByteSet {
 public:
  explicit ByteSet(const char* characters) {
    for (; *characters != '\0'; ++characters) Member(*characters) = true;
  }

  // The length of the leading run of characters that are in the set, or that are not.
  std::size_t RunLength(std::string_view text, bool inSet) const {
    std::size_t length = 0;
    while (length < text.size() && Contains(text[length]) == inSet) ++length;
    return length;
  }
  bool Contains(char c) const { return members_[static_cast<unsigned char>(c)]; }

 private:
  bool& Member(char c) { return members_[static_cast<unsigned char>(c)]; }

  bool members_[256] = {};
};

}  // namespace

TavoInput::TavoInput() : given_(std::make_shared<const std::string>()) {}

TavoInput::~TavoInput() = default;

const char* TavoInput::GetWhiteSpace() const {
  return " \n\r\t";
}

const char* TavoInput::GetBreakWordAt() const {
  return " \n\r\t()|?*,+";
}

const char* TavoInput::GetBreakIsWord() const {
  return "()|?*,+";
}

void TavoInput::SetString(std::string text) {
  given_ = std::make_shared<const std::string>(std::move(text));
  cursor_ = 0;
  expanded_.clear();
  expandedCursor_ = 0;
}

void TavoInput::AddExpandedString(const std::string& text) {
  expanded_.replace(0, expandedCursor_, text);
  expandedCursor_ = 0;
}

std::string_view TavoInput::GetUnread() const {
  return IsExpanded() ? std::string_view(expanded_).substr(expandedCursor_) : UnreadGiven();
}

void TavoInput::Consume(std::size_t n) {
  std::size_t& cursor = IsExpanded() ? expandedCursor_ : cursor_;
  cursor += n;
}

void TavoInput::EatWhiteSpace() {
  const std::string_view unread = GetUnread();
  const std::string_view skipped =
      unread.substr(0, ByteSet(GetWhiteSpace()).RunLength(unread, true));
  lastWhiteSpace_ = skipped;
  Consume(skipped.size());
}

std::string TavoInput::GetWhiteSpaceCut() {
  return std::exchange(lastWhiteSpace_, {});
}

std::size_t TavoInput::FirstWordLength() const {
  const std::string_view unread = GetUnread();
  const std::size_t length = ByteSet(GetBreakWordAt()).RunLength(unread, false);
  if (length > 0 || unread.empty()) return length;
  return ByteSet(GetBreakIsWord()).Contains(unread[0]) ? 1 : 0;
}

std::string TavoInput::CutWord() {
  std::string word = GetFirstWord();
  Consume(word.size());
  EatWhiteSpace();
  return word;
}

std::string TavoInput::GetFirstWord() const {
  return Cased(std::string(GetUnread().substr(0, FirstWordLength())));
}

char TavoInput::GetFirstChar() const {
  const std::string_view unread = GetUnread();
  return unread.empty() ? '\0' : unread[0];
}

void TavoInput::MoveOn(int n) {
  auto left = static_cast<std::size_t>(std::max(n, 0));
  if (IsExpanded()) {
    const std::size_t taken = std::min(left, GetUnread().size());
    Consume(taken);
    left -= taken;
  }
  if (left > 0) Consume(std::min(left, GetUnread().size()));
}

std::string TavoInput::GetUpTo(char terminator, int consume) {
  return TakeUpTo(terminator, 1, consume);
}

std::string TavoInput::GetUpTo(const std::string& terminator, int consume) {
  return TakeUpTo(std::string_view(terminator), terminator.size(), consume);
}

template <typename Terminator>
std::string TavoInput::TakeUpTo(const Terminator& terminator, std::size_t length, int consume) {
  std::string taken;
  for (;;) {
    const bool inExpanded = IsExpanded() != 0;
    const std::string_view unread = GetUnread();
    const std::size_t found = unread.find(terminator);
    taken += unread.substr(0, found);
    if (found != std::string_view::npos) {
      Consume(found + (consume ? length : 0));
      break;
    }
    Consume(unread.size());
    if (!inExpanded) break;
  }
  return Cased(std::move(taken));
}

int TavoInput::GetQuotedStringOrWord(std::string& out, int quotedOnly) {
  const char quote = GetFirstChar();
  if (quote != '"' && quote != '\'') {
    if (quotedOnly) return 0;
    out = CutWord();
    return 1;
  }
  std::string opened;
  std::size_t searchFrom = 1;
  if (IsExpanded()) {
    const std::string_view unread = GetUnread();
    if (unread.find(quote, 1) == std::string_view::npos) {
      opened = unread;
      Consume(unread.size());
      searchFrom = 0;
    }
  }
  const std::string_view unread = GetUnread();
  const std::size_t closing = unread.find(quote, searchFrom);
  if (closing == std::string_view::npos) return 0;
  out = Cased(opened.append(unread.substr(0, closing + 1)));
  Consume(closing + 1);
  return 1;
}

std::string TavoInput::GetContext(int maxLength) const {
  const std::string_view unread = UnreadGiven();
  const auto limit = static_cast<std::size_t>(std::max(maxLength, 0));
  if (unread.size() <= limit) return std::string(unread);
  return std::string(unread.substr(0, limit < 3 ? 0 : limit - 3)) + "...";
}

std::string TavoInput::Cased(std::string text) const {
  if (lowerCase_) {
    for (char& c : text) c = static_cast<char>(ToAsciiLower(static_cast<unsigned char>(c)));
  }
  return text;
}

}  // namespace vemra
