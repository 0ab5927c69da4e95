#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Support/definition/FieldList.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Matcher.h"
#include "programs/engine/Query.h"
#include "programs/engine/SortOrder.h"

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

// A query at work on an index. The index is a loan.
class Search {
 public:
  // query: parsed and expanded.
  Search(IndexDatabase& index, QueryNode query);
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  FoundTexts Find(int count, const FieldWeights& weights);
  // The first count of the order, equal ones by number, instead of the best.
  FoundTexts FindSorted(int count, const FieldWeights& weights, const SortOrder& order);
  // The hits of a text, by field and position; their words are a loan of the search. They are those
  // of the parts of the query that the text satisfies: for "(a AND b) OR c" those of a only where b
  // is there too. None when the text does not match.
  std::vector<Hit> FindHits(std::int64_t number);

 private:
  std::int64_t ForEachText(const FieldWeights& weights,
                           const std::function<void(const FoundText&)>& onText);
  bool Matches(std::int64_t number);

  IndexDatabase& index_;
  const QueryNode query_;
  const std::string expression_;  // finds what matches, and more when places decide
  const bool needsPlaces_;
  Matcher matcher_;
  std::vector<Hit> hits_;  // kept for its capacity
};

}  // namespace vemra::engine
