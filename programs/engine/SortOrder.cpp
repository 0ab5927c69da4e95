#include "programs/engine/SortOrder.h"

#include "Support/text/LangPack.h"

namespace vemra::engine {
namespace {

constexpr char kValueEnd = 19;  // after the value of each field, from field 0 on

}  // namespace

std::string SortValue(std::string_view sortKey, int fieldno) {
  for (int i = 0; i < fieldno; ++i) {
    const std::size_t end = sortKey.find(kValueEnd);
    if (end == std::string_view::npos) return {};
    sortKey.remove_prefix(end + 1);
  }
  return std::string(sortKey.substr(0, sortKey.find(kValueEnd)));
}

int CompareSortValues(const std::string& a, const std::string& b, const SortOrder& order) {
  if (a.empty() || b.empty()) return static_cast<int>(a.empty()) - static_cast<int>(b.empty());
  const int result = order.isNumber ? a.compare(b) : order.pack->Compare(a.c_str(), b.c_str());
  return order.isDescending ? -result : result;
}

}  // namespace vemra::engine
