#include "programs/formats/DocumentEncoding.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "programs/formats/Utf8.h"
#include "programs/formats/WhiteSpace.h"

namespace vemra {

namespace {

constexpr std::size_t kDeclarationBytes = 4096;

// Where a document says nothing, kDetect.
constexpr int kDetect = 0;
constexpr int kUtf8 = 65001;
constexpr int kUtf16Little = 1200;
constexpr int kUtf16Big = 1201;

// Labels without their punctuation, in lower case.
struct Label {
  std::string_view name;
  int encoding;
};
constexpr Label kLabels[] = {
    {"utf8", kUtf8},
    {"unicode11utf8", kUtf8},
    {"xunicode20utf8", kUtf8},
    {"utf16", kUtf8},
    {"utf16le", kUtf8},
    {"utf16be", kUtf8},
    {"iso88591", 1252},
    {"iso885911987", 1252},
    {"latin1", 1252},
    {"isolatin1", 1252},
    {"l1", 1252},
    {"88591", 1252},
    {"isoir100", 1252},
    {"ibm819", 1252},
    {"cp819", 1252},
    {"usascii", 1252},
    {"ascii", 1252},
    {"ansix341968", 1252},
    {"windows1250", 1250},
    {"cp1250", 1250},
    {"xcp1250", 1250},
    {"windows1251", 1251},
    {"cp1251", 1251},
    {"xcp1251", 1251},
    {"windows1252", 1252},
    {"cp1252", 1252},
    {"xcp1252", 1252},
    {"windows1253", 1253},
    {"cp1253", 1253},
    {"windows1254", 1254},
    {"cp1254", 1254},
    {"iso88599", 1254},
    {"latin5", 1254},
    {"windows1255", 1255},
    {"cp1255", 1255},
    {"windows1256", 1256},
    {"cp1256", 1256},
    {"windows1257", 1257},
    {"cp1257", 1257},
    {"windows1258", 1258},
    {"cp1258", 1258},
    {"koi8r", 20866},
    {"koi8", 20866},
    {"iso88592", 28592},
    {"latin2", 28592},
    {"isolatin2", 28592},
    {"l2", 28592},
    {"iso885915", 28605},
    {"latin9", 28605},
    {"l9", 28605},
};

int EncodingOfLabel(std::string_view label) {
  std::string name;
  for (const char c : label) {
    if (IsAsciiAlnum(c)) name += ToAsciiLower(c);
  }
  const auto* const found = std::find_if(std::begin(kLabels), std::end(kLabels),
                                         [&](const Label& known) { return known.name == name; });
  return found == std::end(kLabels) ? kDetect : found->encoding;
}

// The value after name, "=" and perhaps a quote; empty when there is none.
std::string_view ValueAfter(std::string_view text, std::string_view name) {
  std::size_t start = FindNoCase(text, name, 0);
  if (start == std::string_view::npos) return {};
  text.remove_prefix(start + name.size());
  text = TrimStart(text);
  if (!text.starts_with('=')) return {};
  text = TrimStart(text.substr(1));
  if (text.starts_with('"') || text.starts_with('\'')) text.remove_prefix(1);
  return text.substr(0, text.find_first_of(" \t\r\n\f\"';/>?"));
}

int DeclaredInMeta(std::string_view text) {
  std::size_t start = 0;
  while ((start = FindNoCase(text, "<meta", start)) != std::string_view::npos) {
    const std::string_view rest = text.substr(start);
    const std::string_view tag = rest.substr(0, rest.find('>'));
    const int encoding = EncodingOfLabel(ValueAfter(tag, "charset"));
    if (encoding != kDetect) return encoding;
    start += 1;
  }
  return kDetect;
}

int DeclaredEncoding(std::string_view text) {
  text = TrimStart(text.substr(0, kDeclarationBytes));
  if (text.starts_with("<?xml")) {
    const int encoding = EncodingOfLabel(ValueAfter(text.substr(0, text.find('>')), "encoding"));
    if (encoding != kDetect) return encoding;
  }
  return DeclaredInMeta(text);
}

// Reads the byte order mark and removes it from text.
int TakeByteOrderMark(std::string_view& text) {
  constexpr std::pair<std::string_view, int> kMarks[] = {
      {"\xEF\xBB\xBF", kUtf8}, {"\xFF\xFE", kUtf16Little}, {"\xFE\xFF", kUtf16Big}};
  for (const auto& [mark, encoding] : kMarks) {
    if (!text.starts_with(mark)) continue;
    text.remove_prefix(mark.size());
    return encoding;
  }
  return kDetect;
}

// An odd last byte is dropped; half a surrogate pair becomes U+FFFD.
std::string Utf16ToUtf8(std::string_view bytes, bool bigEndian) {
  constexpr char32_t kReplacement = 0xFFFD;
  std::string out;
  out.reserve(bytes.size());
  char32_t high = 0;  // a first half that waits for its second
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    const char32_t unit = bigEndian ? first << 8 | second : second << 8 | first;
    const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
    const bool isLow = unit >= 0xDC00 && unit < 0xE000;
    if (high != 0 && isLow) {
      AppendUtf8(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00), out);
    } else {
      if (high != 0) AppendUtf8(kReplacement, out);
      if (!isHigh) AppendUtf8(isLow ? kReplacement : unit, out);
    }
    high = isHigh ? unit : 0;
  }
  if (high != 0) AppendUtf8(kReplacement, out);
  return out;
}

}  // namespace

std::string DecodeDocument(std::string bytes, Declaration declaration, const CodePage& codePage) {
  std::string_view text = bytes;
  int encoding = TakeByteOrderMark(text);
  if (encoding == kDetect && declaration == Declaration::kMarkup) encoding = DeclaredEncoding(text);
  if (encoding == kDetect) encoding = IsUtf8(text) ? kUtf8 : 1252;

  if (encoding == kUtf16Little || encoding == kUtf16Big) {
    return codePage.FromUtf8(Utf16ToUtf8(text, encoding == kUtf16Big));
  }
  if (AsciiPrefix(text) == text.size()) {
    bytes.erase(0, bytes.size() - text.size());
    return bytes;
  }
  if (encoding == kUtf8) return codePage.FromUtf8(text);
  if (encoding == codePage.GetNumber()) return codePage.Normalize(std::move(bytes));
  return codePage.FromUtf8(CodePage::Find(encoding)->ToUtf8(text));
}

}  // namespace vemra
