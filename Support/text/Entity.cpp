#include "Support/text/Entity.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "Support/foundation/Ascii.h"

namespace vemra {

namespace {

struct NamedCharacter {
  char character;
  std::string_view name;
};

// In the order in which they are found and replaced.
constexpr std::array<NamedCharacter, 6> kNamedCharacters = {
    {{'"', "quot"}, {'&', "amp"}, {'\'', "apos"}, {'<', "lt"}, {'>', "gt"}, {' ', "nbsp"}}};

constexpr int kFirstLatin1Code = 161;

// HTML 4.0, the characters 161 to 255.
constexpr std::array<std::string_view, 95> kLatin1Names = {
    "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",
    "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",
    "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",
    "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute",
    "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",
    "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",  "szlig",
    "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil", "egrave",
    "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",    "ntilde",
    "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave", "uacute",
    "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

struct Latin1Entity {
  std::string_view name;
  int code;
};

constexpr auto kLatin1ByName = [] {
  std::array<Latin1Entity, kLatin1Names.size()> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i] = {kLatin1Names[i], kFirstLatin1Code + static_cast<int>(i)};
  }
  std::sort(table.begin(), table.end(),
            [](const Latin1Entity& a, const Latin1Entity& b) { return a.name < b.name; });
  return table;
}();

int Latin1Code(std::string_view name) {
  const auto found = std::lower_bound(
      kLatin1ByName.begin(), kLatin1ByName.end(), name,
      [](const Latin1Entity& entity, std::string_view wanted) { return entity.name < wanted; });
  return found != kLatin1ByName.end() && found->name == name ? found->code : 0;
}

const NamedCharacter* FindNamed(char c) {
  const auto found = std::find_if(kNamedCharacters.begin(), kNamedCharacters.end(),
                                  [c](const NamedCharacter& n) { return n.character == c; });
  return found != kNamedCharacters.end() ? &*found : nullptr;
}

// The value of a digit in the base, or -1.
int DigitValue(char c, int base) {
  const auto byte = static_cast<unsigned char>(c);
  if (IsAsciiDigit(byte)) return byte - '0';
  const int letter = ToAsciiLower(byte) - 'a';
  return base == 16 && letter >= 0 && letter < 6 ? 10 + letter : -1;
}

// What each byte becomes. Every byte is written with one copy of fixed size and no branch: in text
// it cannot be foretold where the next blank stands.
class TranslationTable {
 public:
  TranslationTable() {
    for (int c = 0; c < 256; ++c) Set(static_cast<char>(c), std::string(1, static_cast<char>(c)));
  }

  void Set(char c, const std::string& text) {
    const auto byte = static_cast<unsigned char>(c);
    lengths_[byte] = static_cast<std::uint8_t>(text.copy(texts_[byte].data(), kMostLength));
  }

  std::string Translate(std::string_view text) const {
    std::string result;
    result.reserve(2 * text.size());
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), kBlock)))
      TranslateBlock(text.substr(0, kBlock), result);
    return result;
  }

 private:
  static constexpr std::size_t kMostLength = 16;  // the longest is &amp;quot;
  static constexpr std::size_t kBlock = 256;      // bytes

  void TranslateBlock(std::string_view block, std::string& result) const {
    char buffer[kBlock * kMostLength];
    char* to = buffer;
    for (const char c : block) {
      const auto byte = static_cast<unsigned char>(c);
      std::memcpy(to, texts_[byte].data(), kMostLength);
      to += lengths_[byte];
    }
    result.append(buffer, static_cast<std::size_t>(to - buffer));
  }

  std::array<std::array<char, kMostLength>, 256> texts_{};
  std::array<std::uint8_t, 256> lengths_{};
};

}  // namespace

// Replacing the six one after the other differs from replacing them at once in one thing only: the
// ampersand of a quote's entity is replaced with the text's own.
class CTavoEntity::EntityTables {
 public:
  explicit EntityTables(std::string (*makeEntity)(const CTavoEntity& entity, char c)) {
    const CTavoEntity entity;
    for (const NamedCharacter& named : kNamedCharacters) {
      for (TranslationTable& table : tables_)
        table.Set(named.character, makeEntity(entity, named.character));
    }
    tables_[1].Set('"', makeEntity(entity, '&') + makeEntity(entity, '"').substr(1));
  }

  const TranslationTable& Of(bool hasAmpersand) const { return tables_[hasAmpersand ? 1 : 0]; }

 private:
  std::array<TranslationTable, 2> tables_;
};

std::string CTavoEntity::TranslateEntity(char c) const {
  return FindNamed(c) != nullptr ? MakeDefEntity(c) : MakeCharEntity(c);
}

void CTavoEntity::TranslateAllEntities(std::string& text) {
  static const EntityTables tables(
      [](const CTavoEntity& entity, char c) { return entity.MakeDefEntity(c); });
  ReplaceFound(text, tables);
}

void CTavoEntity::TranslateAllEscEntities(std::string& text) {
  static const EntityTables tables(
      [](const CTavoEntity& entity, char c) { return entity.MakeCharEntity(c); });
  ReplaceFound(text, tables);
}

void CTavoEntity::ReplaceFound(std::string& text, const EntityTables& tables) {
  if (HasEntity(text)) text = tables.Of(text.find('&') != std::string::npos).Translate(text);
}

int CTavoEntity::HasEntity(const std::string& text) {
  found_.clear();
  for (const NamedCharacter& named : kNamedCharacters) {
    if (text.find(named.character) != std::string::npos) found_.emplace_back(1, named.character);
  }
  return !found_.empty();
}

std::string CTavoEntity::IsEntity(std::string_view name) const {
  if (const char c = IsDefEntity(name); c != '\0') return std::string(1, c);
  if (const int code = Latin1Code(name); code != 0) return std::to_string(code);
  if (const char c = IsCharEntity(name); c != '\0') return std::string(1, c);
  return {};
}

char CTavoEntity::IsDefEntity(std::string_view name) const {
  const auto found = std::find_if(kNamedCharacters.begin(), kNamedCharacters.end(),
                                  [name](const NamedCharacter& n) { return n.name == name; });
  return found != kNamedCharacters.end() ? found->character : '\0';
}

char CTavoEntity::IsCharEntity(std::string_view name) const {
  if (name.size() < 2 || name[0] != '#') return '\0';
  const int base = name[1] == 'x' ? 16 : 10;
  const std::string_view digits = name.substr(base == 16 ? 2 : 1);
  unsigned value = 0;  // only the low 8 bits count, so it may wrap
  for (const char c : digits) {
    const int digit = DigitValue(c, base);
    if (digit < 0) return '\0';
    value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
  }
  return static_cast<char>(value);
}

std::string CTavoEntity::MakeDefEntity(std::string_view name) const {
  std::string entity("&");
  entity.append(name).push_back(';');
  return entity;
}

std::string CTavoEntity::MakeDefEntity(char c) const {
  const NamedCharacter* named = FindNamed(c);
  return named != nullptr ? MakeDefEntity(named->name) : std::string();
}

std::string CTavoEntity::MakeCharEntity(char c) const {
  return MakeDefEntity("#" + std::to_string(static_cast<signed char>(c)));
}

}  // namespace vemra
