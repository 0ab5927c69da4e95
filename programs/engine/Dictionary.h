#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Support/definition/FieldList.h"

namespace vemra::engine {

class IndexDatabase;

struct DictionaryWord {
  std::string word;  // as it is indexed, folded
  std::int64_t texts = 0;
  std::int64_t occurrences = 0;
};

struct DictionaryPart {
  std::vector<DictionaryWord> words;  // in byte order
  bool hasMore = false;
};

// The first count words of the index that begin with a folded prefix and stand in one of the
// columns, with the numbers of texts that hold them there and of their places.
DictionaryPart ReadDictionary(IndexDatabase& index, const std::string& prefix,
                              const CTavoFieldList& columns, int count);

}  // namespace vemra::engine
