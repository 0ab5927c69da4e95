#include "programs/formats/WhiteSpace.h"

#include <algorithm>

#include "Support/text/ByteSet.h"

namespace vemra {

std::string_view TrimStart(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view TrimEnd(std::string_view text) {
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::size_t FindNoCase(std::string_view text, std::string_view name, std::size_t from) {
  for (; from + name.size() <= text.size(); ++from) {
    if (EqualsNoCase(text.substr(from, name.size()), name)) return from;
  }
  return std::string_view::npos;
}

void BlankControls(std::string& text, std::size_t from) {
  static const ByteSet controls = [] {
    std::string bytes(1, '\x7F');
    for (char c = 0; c < ' '; ++c) {
      if (std::string_view("\t\n\f\r").find(c) == std::string_view::npos) bytes += c;
    }
    return ByteSet(bytes);
  }();
  for (std::size_t i = controls.FindIn(text, from); i < text.size(); i = controls.FindIn(text, i)) {
    text[i] = ' ';
  }
}

std::size_t FindCut(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text.size();
  std::size_t cut = limit;
  while (cut > 0 && !IsBlank(text[cut - 1])) --cut;
  return cut > 0 ? cut : limit;
}

}  // namespace vemra
