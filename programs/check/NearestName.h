#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vemra::check {

bool SameName(std::string_view a, std::string_view b);  // without regard to ASCII case
std::string FoldCase(std::string_view text);            // ASCII letters in lower case

// How many characters to insert, delete or replace to make one name of the other, without regard to
// ASCII case. Of a name longer than 64 bytes only its beginning counts.
int EditDistance(std::string_view a, std::string_view b);

// The name nearest to the given one, the first of several; empty without names.
std::string NearestName(std::string_view name, const std::vector<std::string>& names);

}  // namespace vemra::check
