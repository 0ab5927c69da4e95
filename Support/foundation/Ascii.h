#pragma once

namespace vemra {

// The fixed ASCII character rules, whatever the process locale. Bytes above 127 are in no class.

constexpr bool IsAsciiSpace(unsigned char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
constexpr bool IsAsciiDigit(unsigned char c) {
  return c >= '0' && c <= '9';
}
constexpr bool IsAsciiUpper(unsigned char c) {
  return c >= 'A' && c <= 'Z';
}
constexpr bool IsAsciiLower(unsigned char c) {
  return c >= 'a' && c <= 'z';
}
constexpr bool IsAsciiAlpha(unsigned char c) {
  return IsAsciiUpper(c) || IsAsciiLower(c);
}
constexpr bool IsAsciiAlnum(unsigned char c) {
  return IsAsciiAlpha(c) || IsAsciiDigit(c);
}
constexpr unsigned char ToAsciiLower(unsigned char c) {
  return IsAsciiUpper(c) ? static_cast<unsigned char>(c + ('a' - 'A')) : c;
}
constexpr char ToAsciiLower(char c) {
  return static_cast<char>(ToAsciiLower(static_cast<unsigned char>(c)));
}

}  // namespace vemra
