#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "programs/engine/Query.h"

namespace vemra::engine {

class IndexDatabase;

// Fills the alternatives of every pattern of the tree with the words of the index that match it and
// stand in the columns that it is looked for in, at most limit words each, in byte order. Returns
// the patterns for which there were more.
std::vector<std::string> ExpandPatterns(IndexDatabase& index, QueryNode& tree, std::uint32_t limit);

}  // namespace vemra::engine
