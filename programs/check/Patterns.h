#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vemra::check {

// Why a pattern can never match, as the end of a sentence; empty when it can.

// Over element paths such as "<html><body><p>"; "*" stands for any run of characters. An empty
// pattern matches the empty path only.
std::string TagPathFault(std::string_view pattern);
// Over names of files without their folder.
std::string FilterFault(std::string_view pattern);

// The patterns of a list joined by ";" or ",", as a folder scan cuts it.
std::vector<std::string_view> SplitFilters(std::string_view filters);

}  // namespace vemra::check
