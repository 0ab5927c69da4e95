#include "programs/formats/Utf8.h"

#include <cstdint>
#include <cstring>

namespace vemra {

namespace {

unsigned char ByteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

char Tail(char32_t bits) {
  return static_cast<char>(0x80 | (bits & 0x3F));
}

}  // namespace

Utf8Character DecodeUtf8(std::string_view utf8) {
  constexpr Utf8Character kInvalid = {0, 0};
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};  // by length; less is overlong
  const unsigned char first = ByteAt(utf8, 0);
  if (first < 0x80) return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || utf8.size() < length) return kInvalid;
  char32_t code = first & (0x7F >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = ByteAt(utf8, i);
    if ((next & 0xC0) != 0x80) return kInvalid;
    code = code << 6 | (next & 0x3F);
  }
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kSmallest[length] || code > 0x10FFFF || surrogate) return kInvalid;
  return {code, length};
}

void AppendUtf8(char32_t c, std::string& out) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | c >> 6);
    out += Tail(c);
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | c >> 12);
    out += Tail(c >> 6);
    out += Tail(c);
  } else {
    out += static_cast<char>(0xF0 | c >> 18);
    out += Tail(c >> 12);
    out += Tail(c >> 6);
    out += Tail(c);
  }
}

std::size_t AsciiPrefix(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::size_t i = 0;
  for (std::uint64_t eight = 0; i + sizeof eight <= text.size(); i += sizeof eight) {
    std::memcpy(&eight, text.data() + i, sizeof eight);
    if ((eight & kHighBits) != 0) break;
  }
  while (i < text.size() && ByteAt(text, i) < 0x80) ++i;
  return i;
}

bool IsUtf8(std::string_view text) {
  for (std::size_t i = AsciiPrefix(text); i < text.size(); i += AsciiPrefix(text.substr(i))) {
    const std::size_t length = DecodeUtf8(text.substr(i)).length;
    if (length == 0) return false;
    i += length;
  }
  return true;
}

}  // namespace vemra
