#pragma once

#include <map>
#include <string>
#include <vector>

#include "programs/engine/Query.h"

// The plain way to match a query, against which the index is held: every word of a text is looked
// at, and every chain of operators tried.
namespace vemra::test {

struct PlainWord {
  int field;
  std::vector<std::string> forms;  // folded: the word and, of a compound, its parts
  int sentence = 0;
  int paragraph = 0;
};

// In document order.
using PlainText = std::vector<PlainWord>;

// By the index of a word in its text: the terms of the query that it is a hit of.
using PlainHits = std::map<std::size_t, std::vector<const engine::QueryTerm*>>;

// Whether the text matches; then its hits are added.
bool MatchPlainly(const engine::QueryNode& query, const PlainText& text, PlainHits& hits);

// Whether a term stands for a form of a word.
bool Allows(const engine::QueryTerm& term, const std::string& form);

}  // namespace vemra::test
