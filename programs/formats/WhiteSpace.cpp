#include "programs/formats/WhiteSpace.h"

#include <algorithm>

namespace vemra {

const std::array<bool, 256> kIsBlank = [] {
  std::array<bool, 256> table{};
  std::fill_n(table.begin(), ' ' + 1, true);
  table[127] = true;
  return table;
}();

std::string_view TrimStart(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view TrimEnd(std::string_view text) {
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool EqualsNoCase(std::string_view text, std::string_view name) {
  return text.size() == name.size() &&
         std::equal(text.begin(), text.end(), name.begin(),
                    [](char a, char b) { return ToAsciiLower(a) == b; });
}

std::size_t FindNoCase(std::string_view text, std::string_view name, std::size_t from) {
  for (; from + name.size() <= text.size(); ++from) {
    if (EqualsNoCase(text.substr(from, name.size()), name)) return from;
  }
  return std::string_view::npos;
}

void BlankControls(std::string& text) {
  static const std::array<bool, 256> isControl = [] {
    std::array<bool, 256> table = kIsBlank;
    for (const char kept : {' ', '\t', '\n', '\f', '\r'}) {
      table[static_cast<unsigned char>(kept)] = false;
    }
    return table;
  }();
  for (char& c : text) {
    if (isControl[static_cast<unsigned char>(c)]) c = ' ';
  }
}

std::size_t FindCut(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text.size();
  std::size_t cut = limit;
  while (cut > 0 && !IsBlank(text[cut - 1])) --cut;
  return cut > 0 ? cut : limit;
}

}  // namespace vemra
