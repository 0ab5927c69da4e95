#include "programs/formats/CodePage.h"

#include <algorithm>
#include <iterator>

#include "Support/foundation/ProfileReader.h"
#include "Support/foundation/Registry.h"
#include "programs/formats/CodePageTables.h"
#include "programs/formats/Utf8.h"
#include "programs/formats/VietnameseTone.h"

namespace vemra {

namespace {

constexpr char32_t kNoBreakSpace = 0xA0;
constexpr char32_t kSoftHyphen = 0xAD;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char kSubstituteControl = 0x1A;  // where a code page assigns every byte above 127

// Spellings, in order of their characters. They must be ASCII, which every code page has.
struct Substitute {
  char32_t first;
  char32_t last;
  const char* text;
};
constexpr Substitute kSubstitutes[] = {
    {0x80, 0x84, " "},       {0x85, 0x85, "\n"},      {0x86, 0xA0, " "},
    {0xAD, 0xAD, ""},        {0x02B9, 0x02B9, "'"},   {0x02BC, 0x02BC, "'"},
    {0x034F, 0x034F, ""},    {0x061C, 0x061C, ""},    {0x2000, 0x200B, " "},
    {0x200C, 0x200F, ""},    {0x2010, 0x2015, "-"},   {0x2018, 0x201B, "'"},
    {0x201C, 0x201F, "\""},  {0x2024, 0x2024, "."},   {0x2025, 0x2025, ".."},
    {0x2026, 0x2026, "..."}, {0x2028, 0x2029, "\n"},  {0x202A, 0x202E, ""},
    {0x202F, 0x202F, " "},   {0x2032, 0x2032, "'"},   {0x2033, 0x2033, "\""},
    {0x2035, 0x2035, "'"},   {0x2036, 0x2036, "\""},  {0x2044, 0x2044, "/"},
    {0x205F, 0x205F, " "},   {0x2060, 0x2064, ""},    {0x2066, 0x206F, ""},
    {0x2212, 0x2212, "-"},   {0x2215, 0x2215, "/"},   {0x3000, 0x3000, " "},
    {0xFB00, 0xFB00, "ff"},  {0xFB01, 0xFB01, "fi"},  {0xFB02, 0xFB02, "fl"},
    {0xFB03, 0xFB03, "ffi"}, {0xFB04, 0xFB04, "ffl"}, {0xFB05, 0xFB06, "st"},
    {0xFE00, 0xFE0F, ""},    {0xFEFF, 0xFEFF, ""},
};

// Spellings besides those in UTF-8, where these would be letters of the words beside them.
constexpr Substitute kUtf8Substitutes[] = {
    {0xA1, 0xA1, " "},      {0xAB, 0xAB, "\""},    {0xB7, 0xB7, " "},     {0xBB, 0xBB, "\""},
    {0xBF, 0xBF, " "},      {0x060C, 0x060C, ","}, {0x061F, 0x061F, "?"}, {0x06D4, 0x06D4, "."},
    {0x0964, 0x0964, "."},  {0x2022, 0x2022, "*"}, {0x2039, 0x203A, "'"}, {0x3001, 0x3001, ", "},
    {0x3002, 0x3002, ". "},
};

template <std::size_t size>
const Substitute* FindSubstitute(const Substitute (&substitutes)[size], char32_t c) {
  const auto* const found = std::lower_bound(
      std::begin(substitutes), std::end(substitutes), c,
      [](const Substitute& substitute, char32_t code) { return substitute.last < code; });
  return found != std::end(substitutes) && found->first <= c ? found : nullptr;
}

constexpr CodePageTable kUtf8Table = {CodePage::kUtf8, {}};

char FirstUnassigned(const CodePageTable& table) {
  const auto found = std::find(table.upper.begin(), table.upper.end(), u'\0');
  if (found == table.upper.end()) return kSubstituteControl;
  return static_cast<char>(128 + (found - table.upper.begin()));
}

// The number in "Code Page" of the section "[Character Set]", or 0.
int ReadCodePageNumber(const std::string& packPath) {
  CTavoProfileReader reader;
  std::int32_t number = 0;
  if (!reader.Open(packPath)) return 0;
  while (reader.GotoNextSection()) {
    if (!reader.ReadSectionTitle("Character Set")) {
      reader.GotoNextLine();
      continue;
    }
    std::string line;
    while (reader.ReadLine(line, 1) && !line.starts_with('[')) {
      if (reader.ReadInt("Code Page", number)) return number;
      reader.GotoNextLine();
    }
  }
  return 0;
}

}  // namespace

CodePage::CodePage(const CodePageTable& table)
    : number_(table.number), table_(table), missing_(FirstUnassigned(table)), blocks_(1) {
  for (std::size_t i = 0; i < table.upper.size(); ++i) {
    const char32_t c = table.upper[i];
    if (c == 0 || c == kNoBreakSpace || c == kSoftHyphen) continue;
    std::uint8_t& block = blockOf_[c >> 8];
    if (block == 0) {
      block = static_cast<std::uint8_t>(blocks_.size());
      blocks_.emplace_back();
    }
    blocks_[block][c & 0xFF] = static_cast<char>(128 + i);
  }
}

const CodePage* CodePage::Find(int number) {
  static const CodePage utf8(kUtf8Table);
  static const std::vector<CodePage> all(GetCodePageTables().begin(), GetCodePageTables().end());
  if (number == kUtf8) return &utf8;
  const auto found = std::find_if(
      all.begin(), all.end(), [number](const CodePage& page) { return page.number_ == number; });
  return found == all.end() ? nullptr : &*found;
}

const CodePage& CodePage::Windows1252() {
  static const CodePage& page = *Find(1252);
  return page;
}

const CodePage& CodePage::OfLanguage(const std::string& language) {
  std::string path;
  const bool hasFile = !language.empty() && GetLanguagePath(language, path) && !path.empty();
  return hasFile ? OfPackFile(path) : Windows1252();
}

const CodePage& CodePage::OfPackFile(const std::string& path) {
  const CodePage* const page = Find(ReadCodePageNumber(path));
  return page != nullptr ? *page : Windows1252();
}

char CodePage::FindByte(char32_t c) const {
  return c > 0xFFFF ? '\0' : blocks_[blockOf_[c >> 8]][c & 0xFF];
}

void CodePage::AppendCharacter(char32_t c, std::string& out) const {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (const char byte = FindByte(c); byte != 0) {
    out += byte;
  } else {
    AppendSubstitute(c, out);
  }
}

void CodePage::AppendSubstitute(char32_t c, std::string& out) const {
  const Substitute* substitute = FindSubstitute(kSubstitutes, c);
  if (substitute == nullptr && number_ == kUtf8) substitute = FindSubstitute(kUtf8Substitutes, c);
  if (substitute != nullptr) {
    out += substitute->text;
  } else if (number_ == kUtf8) {
    AppendUtf8(c, out);
  } else if (const VietnameseTone tone = SplitVietnameseTone(c);
             tone.vowel != 0 && FindByte(tone.mark) != 0) {
    AppendCharacter(tone.vowel, out);
    out += FindByte(tone.mark);
  } else {
    out += missing_;
  }
}

char32_t CodePage::ToCharacter(unsigned char byte) const {
  if (byte < 0x80) return byte;
  const char32_t c = table_.upper[byte - 0x80U];
  return c != 0 ? c : kReplacement;
}

std::string CodePage::FromUtf8(std::string_view utf8) const {
  std::string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    const std::size_t ascii = AsciiPrefix(utf8);
    out.append(utf8, 0, ascii);
    utf8.remove_prefix(ascii);
    if (utf8.empty()) break;
    const Utf8Character character = DecodeUtf8(utf8);
    if (character.length > 0) {
      AppendCharacter(character.code, out);
      utf8.remove_prefix(character.length);
    } else {
      AppendCharacter(Windows1252().ToCharacter(static_cast<unsigned char>(utf8[0])), out);
      utf8.remove_prefix(1);
    }
  }
  return out;
}

std::string CodePage::ToUtf8(std::string_view bytes) const {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  while (!bytes.empty()) {
    const std::size_t ascii = AsciiPrefix(bytes);
    out.append(bytes, 0, ascii);
    bytes.remove_prefix(ascii);
    if (bytes.empty()) break;
    const std::size_t length = number_ == kUtf8 ? DecodeUtf8(bytes).length : 0;
    if (length > 0) {
      out.append(bytes, 0, length);
    } else {
      AppendUtf8(ToCharacter(static_cast<unsigned char>(bytes[0])), out);
    }
    bytes.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

std::string CodePage::Normalize(std::string bytes) const {
  for (std::size_t i = 0; i < table_.upper.size(); ++i) {
    const auto byte = static_cast<char>(128 + i);
    if (table_.upper[i] == kNoBreakSpace) std::replace(bytes.begin(), bytes.end(), byte, ' ');
    if (table_.upper[i] == kSoftHyphen) std::erase(bytes, byte);
  }
  return bytes;
}

}  // namespace vemra
