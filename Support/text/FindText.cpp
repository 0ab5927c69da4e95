#include "Support/text/FindText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <vector>

#include "Support/text/LangPack.h"

namespace vemra {

namespace {

// What a byte is compared as.
using Folding = std::array<unsigned char, 256>;

Folding MakeFolding(const TavoLangPack* pack) {
  Folding folding;
  for (std::size_t c = 0; c < folding.size(); ++c) {
    const auto byte = static_cast<unsigned char>(c);
    folding[c] = pack != nullptr ? pack->ToIndex(byte) : byte;
  }
  return folding;
}

// For each start of pattern, the length of the longest shorter start that it ends with.
std::vector<std::size_t> MakeBorders(const std::string& pattern) {
  std::vector<std::size_t> borders(pattern.size() + 1, 0);
  for (std::size_t i = 1, length = 0; i < pattern.size(); ++i) {
    while (length > 0 && pattern[i] != pattern[length]) length = borders[length];
    if (pattern[i] == pattern[length]) ++length;
    borders[i + 1] = length;
  }
  return borders;
}

// The offset behind the first occurrence of what in text, or 0. Each is read by an iterator, so
// that it can be read from its end. Never goes back in text, which is what keeps it linear.
template <typename Iterator>
std::size_t FindFirstEnd(Iterator text, Iterator textEnd, Iterator what, Iterator whatEnd,
                         const TavoLangPack* pack) {
  const Folding folding = MakeFolding(pack);
  const auto fold = [&folding](char c) {
    return static_cast<char>(folding[static_cast<unsigned char>(c)]);
  };
  std::string pattern;
  std::transform(what, whatEnd, std::back_inserter(pattern), fold);
  if (pattern.empty()) return 0;
  const std::vector<std::size_t> borders = MakeBorders(pattern);
  std::size_t matched = 0;
  for (std::size_t read = 1; text != textEnd; ++text, ++read) {
    const char c = fold(*text);
    while (matched > 0 && c != pattern[matched]) matched = borders[matched];
    if (c == pattern[matched]) ++matched;
    if (matched == pattern.size()) return read;
  }
  return 0;
}

std::size_t Clamp(int position, std::string_view text) {
  return std::min(static_cast<std::size_t>(std::max(position, 0)), text.size());
}

}  // namespace

std::optional<TavoTextRange> FindForward(std::string_view text, std::string_view what, int from,
                                         const TavoLangPack* pack) {
  const std::size_t start = Clamp(from, text);
  const std::string_view searched = text.substr(start);
  const std::size_t end =
      FindFirstEnd(searched.begin(), searched.end(), what.begin(), what.end(), pack);
  if (end == 0) return std::nullopt;
  return TavoTextRange{.start = static_cast<int>(start + end - what.size()),
                       .length = static_cast<int>(what.size())};
}

std::optional<TavoTextRange> FindBackward(std::string_view text, std::string_view what, int from,
                                          const TavoLangPack* pack) {
  const std::string_view searched = text.substr(0, Clamp(from, text));
  const std::size_t end =
      FindFirstEnd(searched.rbegin(), searched.rend(), what.rbegin(), what.rend(), pack);
  if (end == 0) return std::nullopt;
  return TavoTextRange{.start = static_cast<int>(searched.size() - end),
                       .length = static_cast<int>(what.size())};
}

}  // namespace vemra
