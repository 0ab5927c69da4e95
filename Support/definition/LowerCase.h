#pragma once

#include <algorithm>
#include <string>

#include "Support/foundation/Ascii.h"

namespace vemra {

// The text with its ASCII letters in lower case, whatever the locale.
inline std::string ToLowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), ToAsciiLower);
  return text;
}

}  // namespace vemra
