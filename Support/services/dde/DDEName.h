#pragma once

#include <algorithm>
#include <string_view>

#include "Support/foundation/Ascii.h"

namespace vemra {

// What a service, a topic and an item may be called; the longest that a string handle holds.
constexpr bool IsDDEName(std::string_view name) {
  return !name.empty() && name.size() <= 255 && name.find('\0') == std::string_view::npos;
}

// Names are the same without regard to ASCII case.
inline bool IsSameDDEName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return ToAsciiLower(static_cast<unsigned char>(x)) ==
           ToAsciiLower(static_cast<unsigned char>(y));
  });
}

}  // namespace vemra
