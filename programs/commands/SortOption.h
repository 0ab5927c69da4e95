#pragma once

#include <string>

#include "programs/commands/Database.h"
#include "programs/engine/SortOrder.h"

namespace vemra::commands {

// Reads what a person asks to sort by: the name of a field in any case, "-" before it for the
// descending order. Throws CommandError that names the fields which texts can be sorted by.
engine::SortOrder ReadSortOption(const std::string& option, Database& database);

}  // namespace vemra::commands
