#pragma once

#include <string>
#include <string_view>

namespace vemra {
class TavoLangPack;
}

namespace vemra::engine {

// The order of texts by one sort field. Texts without a value for it come last, also in the
// descending order.
struct SortOrder {
  int fieldno = 0;
  bool isNumber =
      false;  // the field's values are numbers, which were stored as digits of one length
  bool isDescending = false;
  const TavoLangPack* pack = nullptr;  // a loan; compares the values of other fields
};

// A field's part of a text's sort key; empty when it has none.
std::string SortValue(std::string_view sortKey, int fieldno);

// Negative, 0 or positive, as a comes before, with or after b.
int CompareSortValues(const std::string& a, const std::string& b, const SortOrder& order);

}  // namespace vemra::engine
