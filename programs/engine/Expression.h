#pragma once

#include <string>

#include "Support/definition/FieldList.h"
#include "programs/engine/Query.h"

namespace vemra::engine {

// A query as an expression of the full-text index; empty when no text can match: a word that the
// index does not know may not be written there. columns: those of the index.
//
// The expression finds the texts that match, and more where the tree holds what the index cannot
// decide (NeedsPlaces): operators between words stand there as AND, and what is excluded by them is
// not excluded.
std::string WriteExpression(const QueryNode& query, const CTavoFieldList& columns);

// Whether the places of words decide which texts match.
bool NeedsPlaces(const QueryNode& query);

}  // namespace vemra::engine
