#include <algorithm>
#include <charconv>

#include "Support/foundation/Ascii.h"
#include "programs/registry/RegistryFile.h"
#include "programs/registry/RegistryFileNames.h"
#include "programs/registry/Utf16.h"

namespace vemra {
namespace {

constexpr std::size_t kNumberDigits = 8;

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

// Without regard to ASCII case.
bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), text.begin(),
                                                    [](unsigned char a, unsigned char b) {
                                                      return ToAsciiLower(a) == ToAsciiLower(b);
                                                    });
}

// Reads the text once from its start to its end; line_ is that of position at_.
class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  std::vector<RegistryChange> Parse() {
    ParseHeader();
    while (SkipToItem()) {
      if (Peek() == '[') {
        ParseKey();
      } else {
        ParseValue();
      }
    }
    return std::move(changes_);
  }

 private:
  [[noreturn]] void Fail(const std::string& text) const { throw RegistryFileError(line_, text); }

  bool AtEnd() const { return at_ == text_.size(); }
  char Peek() const { return AtEnd() ? '\0' : text_[at_]; }
  char Next() {
    const char c = text_[at_++];
    if (c == '\n') line_++;
    return c;
  }
  void SkipBlanks() {
    while (IsBlank(Peek())) at_++;
  }

  // The rest of the line without its line end, which is passed.
  std::string_view TakeLine() {
    const std::size_t end = std::min(text_.find('\n', at_), text_.size());
    std::string_view line = text_.substr(at_, end - at_);
    at_ = std::min(end + 1, text_.size());
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }

  // To the next key or value; false at the end of the text.
  bool SkipToItem() {
    while (!AtEnd()) {
      const char c = Peek();
      if (c == ';') {
        TakeLine();
        line_++;
      } else if (IsBlank(c) || c == '\r' || c == '\n') {
        Next();
      } else {
        return true;
      }
    }
    return false;
  }

  // Nothing but a comment may follow on the line.
  void EndLine() {
    SkipBlanks();
    const std::string_view rest = TakeLine();
    if (!rest.empty() && rest[0] != ';')
      Fail("nothing may follow here but \"" + Shown(rest) + "\" does");
    line_++;
  }

  static std::string Shown(std::string_view text) { return std::string(text.substr(0, 40)); }

  void ParseHeader() {
    const std::string_view header = TakeLine();
    isUnicode_ = header == kUnicodeHeader;
    if (!isUnicode_ && header != kAnsiHeader) {
      Fail("the first line is \"" + std::string(kUnicodeHeader) + "\" or \"" +
           std::string(kAnsiHeader) + "\"");
    }
    line_++;
  }

  void ParseKey() {
    const std::string_view line = TakeLine();
    const std::size_t end = line.rfind(']');
    if (end == std::string_view::npos) Fail("a key ends with \"]\"");
    const std::string_view rest = line.substr(end + 1);
    const std::size_t more = rest.find_first_not_of(" \t");
    if (more != std::string_view::npos && rest[more] != ';') Fail("a key has its line for itself");
    RegistryChange change;
    std::string_view name = line.substr(1, end - 1);
    change.isDeleted = name.starts_with('-');
    if (change.isDeleted) name.remove_prefix(1);
    change.key = BelowRoot(name);
    changes_.push_back(std::move(change));
    line_++;
  }

  std::string BelowRoot(std::string_view name) const {
    const std::string root = RegistryRootName();
    const bool isBelow =
        StartsWith(name, root) && (name.size() == root.size() || name[root.size()] == '\\');
    if (!isBelow) Fail("the key " + std::string(name) + " is not below " + root);
    return std::string(name.substr(std::min(root.size() + 1, name.size())));
  }

  void ParseValue() {
    if (Peek() != '"' && Peek() != '@')
      Fail("a key in brackets, a value's name in quotes or a comment is expected");
    if (changes_.empty()) Fail("a value stands before the first key");
    if (changes_.back().isDeleted) Fail("a value stands below a key that is deleted");
    RegistryValueChange item;
    if (Peek() == '@') {
      at_++;
    } else {
      item.value.name = TakeQuoted();
    }
    SkipBlanks();
    if (Peek() != '=') Fail("\"=\" is expected after the name of a value");
    at_++;
    SkipBlanks();
    ParseData(item);
    EndLine();
    changes_.back().values.push_back(std::move(item));
  }

  void ParseData(RegistryValueChange& item) {
    RegistryValue& value = item.value;
    if (Peek() == '-') {
      at_++;
      item.isDeleted = true;
    } else if (Peek() == '"') {
      value.type = RegistryType::kString;
      value.data = TakeQuoted() + '\0';
    } else if (TakePrefix("dword:")) {
      value.type = RegistryType::kNumber;
      value.data = TakeNumber();
    } else if (TakePrefix("hex")) {
      value.type = TakeType();
      value.data = FromFileCharacters(value.type, TakeBytes());
    } else {
      Fail("a text in quotes, dword:, hex:, hex(TYPE): or - is expected after \"=\"");
    }
  }

  bool TakePrefix(std::string_view prefix) {
    if (!text_.substr(at_).starts_with(prefix)) return false;
    at_ += prefix.size();
    return true;
  }

  // Up to the closing quote, which may stand on a later line.
  std::string TakeQuoted() {
    const std::size_t firstLine = line_;
    std::string text;
    at_++;
    while (!AtEnd()) {
      char c = Next();
      if (c == '"') return text;
      if (c == '\\') c = TakeEscaped();
      text += c;
    }
    line_ = firstLine;
    Fail("a quote is not closed");
  }

  char TakeEscaped() {
    const char c = AtEnd() ? '\0' : Next();
    switch (c) {
      case '\\':
      case '"':
        return c;
      case 'n':
        return '\n';
      case 'r':
        return '\r';
      default:
        Fail("a backslash in quotes is written twice");
    }
  }

  std::uint32_t TakeHex(std::size_t maxDigits, const char* what) {
    const char* const begin = text_.data() + at_;
    const char* const limit = begin + std::min(maxDigits, text_.size() - at_);
    std::uint32_t number = 0;
    const auto read = std::from_chars(begin, limit, number, 16);
    if (read.ptr == begin) Fail(std::string(what) + " in hexadecimal digits is expected");
    at_ += std::size_t(read.ptr - begin);
    return number;
  }

  std::string TakeNumber() {
    const std::uint32_t number = TakeHex(kNumberDigits, "a number of up to eight digits");
    std::string data;
    for (int shift = 0; shift < 32; shift += 8) data += char(number >> shift & 0xff);
    return data;
  }

  // What stands between "hex" and the bytes.
  RegistryType TakeType() {
    auto type = RegistryType::kBinary;
    if (Peek() == '(') {
      at_++;
      type = static_cast<RegistryType>(TakeHex(kNumberDigits, "a type"));
      if (Peek() != ')') Fail("\")\" is expected after a type");
      at_++;
    }
    if (Peek() != ':') Fail("\":\" is expected after \"hex\"");
    at_++;
    return type;
  }

  // Bytes with commas between them; a backslash at the end of a line continues the list.
  std::string TakeBytes() {
    std::string bytes;
    bool isAfterComma = false;
    for (;;) {
      SkipBlanks();
      if (Peek() == '\\') {
        at_++;
        if (!TakeLine().empty()) Fail("a line ends after the backslash that continues it");
        line_++;
      } else if (AtEnd() || Peek() == '\r' || Peek() == '\n' || Peek() == ';') {
        if (isAfterComma) Fail("a byte is expected after a comma");
        return bytes;
      } else {
        if (!bytes.empty() && !isAfterComma) Fail("a comma is expected between bytes");
        bytes += char(TakeHex(2, "a byte"));
        SkipBlanks();
        isAfterComma = Peek() == ',';
        if (isAfterComma) at_++;
      }
    }
  }

  std::string FromFileCharacters(RegistryType type, std::string bytes) const {
    if (!isUnicode_ || !HoldsText(type)) return bytes;
    auto text = Utf16ToUtf8(bytes);
    if (!text) Fail("the bytes of a text are UTF-16 in this form of file");
    return *std::move(text);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  bool isUnicode_ = false;
  std::vector<RegistryChange> changes_;
};

}  // namespace

std::vector<RegistryChange> ParseRegistryFile(std::string_view bytes) {
  if (bytes.starts_with(kUtf16Mark)) {
    const auto text = Utf16ToUtf8(bytes.substr(kUtf16Mark.size()));
    if (!text) throw RegistryFileError(1, "the file begins as UTF-16, but is damaged");
    return Parser(*text).Parse();
  }
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  return Parser(bytes).Parse();
}

}  // namespace vemra
