#pragma once

#include <cstddef>
#include <string_view>

namespace vemra {

// The rule of MatchWildcard with any limit to what a star may stand for, so that the limit can be
// tested on short names. Not exported.
bool MatchWildcardWithin(std::string_view pattern, std::string_view name, std::size_t starLimit);

}  // namespace vemra
