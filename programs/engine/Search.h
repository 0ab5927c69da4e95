#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Support/definition/FieldList.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Query.h"

namespace vemra::engine {

// How much a word counts by the field that it stands in; 1 unless set otherwise.
struct FieldWeights {
  FieldWeights() { byField.fill(1.0); }
  std::array<double, kMaxFields> byField;
};

struct FoundText {
  std::int64_t number = 0;
  double score = 0;  // higher is better
};

struct FoundTexts {
  std::int64_t total = 0;
  std::vector<FoundText> best;  // best first; equal scores by number
};

// A word of a text that a query matched: the position-th word, from 0, of the words indexed under
// a field. words are those that the query allows there, a loan of the search.
struct Hit {
  int fieldno = 0;
  int position = 0;
  const std::vector<std::string>* words = nullptr;
};

// A query at work on an index. The index is a loan.
class Search {
 public:
  // query: parsed and expanded.
  Search(IndexDatabase& index, QueryNode query);

  FoundTexts Find(int count, const FieldWeights& weights);
  // The hits of a text, by field and position. They are those of the parts of the query that the
  // text satisfies: for "(a AND b) OR c" those of a only where b is there too. None when the text
  // does not match.
  std::vector<Hit> FindHits(std::int64_t number);

 private:
  bool CollectHits(const QueryNode& node, std::int64_t number, std::vector<Hit>& hits);
  bool CollectPhrase(const QueryNode& phrase, std::int64_t number, std::vector<Hit>& hits);

  IndexDatabase& index_;
  QueryNode query_;
  CTavoFieldList columns_;  // of the index
  std::optional<Statement> places_;
};

}  // namespace vemra::engine
