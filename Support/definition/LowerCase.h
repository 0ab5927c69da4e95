#pragma once

#include <algorithm>
#include <string>

namespace vemra {

// The text with its ASCII letters in lower case, whatever the locale.
inline std::string ToLowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return text;
}

}  // namespace vemra
