#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vemra {

// The character at the start of utf8, which is not empty. length is the number of its bytes, or 0
// when they are no UTF-8: cut short, overlong, a surrogate, or above U+10FFFF.
struct Utf8Character {
  char32_t code;
  std::size_t length;
};
Utf8Character DecodeUtf8(std::string_view utf8);

void AppendUtf8(char32_t c, std::string& out);

// The length of the ASCII text at the start of text.
std::size_t AsciiPrefix(std::string_view text);

bool IsUtf8(std::string_view text);

}  // namespace vemra
