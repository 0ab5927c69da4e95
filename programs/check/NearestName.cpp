#include "programs/check/NearestName.h"

#include <algorithm>
#include <array>
#include <climits>

#include "Support/foundation/Ascii.h"

namespace vemra::check {
namespace {

constexpr std::size_t kMaxName = 64;

bool SameCharacter(char a, char b) {
  return ToAsciiLower(static_cast<unsigned char>(a)) == ToAsciiLower(static_cast<unsigned char>(b));
}

}  // namespace

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameCharacter);
}

std::string FoldCase(std::string_view text) {
  std::string folded(text);
  for (char& c : folded) c = static_cast<char>(ToAsciiLower(static_cast<unsigned char>(c)));
  return folded;
}

int EditDistance(std::string_view a, std::string_view b) {
  a = a.substr(0, kMaxName);
  b = b.substr(0, kMaxName);
  std::array<int, kMaxName + 1> row{};  // the distances of a's beginning to every beginning of b
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = static_cast<int>(j);
  for (std::size_t i = 0; i < a.size(); ++i) {
    int diagonal = row[0]++;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const int replaced = diagonal + (SameCharacter(a[i], b[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row[b.size()];
}

std::string NearestName(std::string_view name, const std::vector<std::string>& names) {
  std::string nearest;
  int least = INT_MAX;
  for (const std::string& candidate : names) {
    const int distance = EditDistance(name, candidate);
    if (distance >= least) continue;
    least = distance;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace vemra::check
