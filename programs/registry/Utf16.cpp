#include "programs/registry/Utf16.h"

#include "programs/formats/Utf8.h"

namespace vemra {
namespace {

constexpr char32_t kHighSurrogates = 0xd800;
constexpr char32_t kLowSurrogates = 0xdc00;
constexpr char32_t kSurrogatesEnd = 0xe000;
constexpr char32_t kSupplement = 0x10000;  // the first character that takes two units

char32_t UnitAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]) | char32_t{static_cast<unsigned char>(bytes[at + 1])}
                                                     << 8;
}

void AppendUnit(char32_t unit, std::string& bytes) {
  bytes += char(unit & 0xff);
  bytes += char(unit >> 8);
}

}  // namespace

std::optional<std::string> Utf16ToUtf8(std::string_view bytes) {
  if (bytes.size() % 2 != 0) return std::nullopt;
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    char32_t code = UnitAt(bytes, at);
    if (code >= kHighSurrogates && code < kSurrogatesEnd) {
      at += 2;
      if (code >= kLowSurrogates || at == bytes.size()) return std::nullopt;
      const char32_t low = UnitAt(bytes, at);
      if (low < kLowSurrogates || low >= kSurrogatesEnd) return std::nullopt;
      code = kSupplement + ((code - kHighSurrogates) << 10) + (low - kLowSurrogates);
    }
    AppendUtf8(code, text);
  }
  return text;
}

std::optional<std::string> Utf8ToUtf16(std::string_view text) {
  std::string bytes;
  bytes.reserve(2 * text.size());
  while (!text.empty()) {
    const Utf8Character character = DecodeUtf8(text);
    if (character.length == 0) return std::nullopt;
    text.remove_prefix(character.length);
    if (character.code < kSupplement) {
      AppendUnit(character.code, bytes);
    } else {
      AppendUnit(kHighSurrogates + ((character.code - kSupplement) >> 10), bytes);
      AppendUnit(kLowSurrogates + ((character.code - kSupplement) & 0x3ff), bytes);
    }
  }
  return bytes;
}

}  // namespace vemra
