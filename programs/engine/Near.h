#pragma once

#include <vector>

#include "programs/engine/Layout.h"
#include "programs/engine/Query.h"

namespace vemra::engine {

// Where an operand of a chain of operators stands in a text.
struct NearPlace {
  Span span;
  const QueryNode* phrase = nullptr;  // the phrase that stands there, a loan
  int fieldno = 0;
  int position = 0;
};

// Of each operand's places, in any order, keeps those that are part of a complete chain: one place
// an operand, each related to the one before and after it as the relations between the operands
// say, of which there is one less. Takes n log n time in the number of places.
//
// A phrase takes up everything from its first word to its last; what shares a word with it does not
// relate to it. Places are within n words when there is a way of at most n steps, from word to
// word, between the nearer ends of the two.
void KeepChains(std::vector<std::vector<NearPlace>>& operands,
                const std::vector<QueryRelation>& relations);

}  // namespace vemra::engine
