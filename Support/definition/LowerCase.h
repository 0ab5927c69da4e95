#pragma once

#include <string>

#include "Support/foundation/Ascii.h"

namespace vemra {

// The text with its ASCII letters in lower case, whatever the locale.
inline std::string ToLowerCase(std::string text) {
  for (char& c : text) c = ToAsciiLower(c);
  return text;
}

}  // namespace vemra
