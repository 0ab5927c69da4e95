#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "Support/foundation/Ascii.h"

namespace vemra {

// White space of markup. Control characters count as white space too, since they are made blanks
// before text is handed over: the table holds 1 for every byte up to 32, and for 127.
inline constexpr std::array<bool, 256> kIsBlank = [] {
  std::array<bool, 256> table{};
  std::fill_n(table.begin(), ' ' + 1, true);
  table[127] = true;
  return table;
}();

inline bool IsBlank(char c) {
  return kIsBlank[static_cast<unsigned char>(c)];
}

std::string_view TrimStart(std::string_view text);
std::string_view TrimEnd(std::string_view text);

// name is in lower case.
inline bool EqualsNoCase(std::string_view text, std::string_view name) {
  return text.size() == name.size() &&
         std::equal(text.begin(), text.end(), name.begin(),
                    [](char a, char b) { return ToAsciiLower(a) == b; });
}
std::size_t FindNoCase(std::string_view text, std::string_view name, std::size_t from);

// Makes a blank of every control character from there on but tab, line feed, form feed and carriage
// return.
void BlankControls(std::string& text, std::size_t from = 0);

// Where to cut text so that at most limit bytes stand before the cut: after the last white space
// there, or at limit when there is none. Text up to limit is not cut.
std::size_t FindCut(std::string_view text, std::size_t limit);

}  // namespace vemra
