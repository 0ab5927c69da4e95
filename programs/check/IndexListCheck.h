#pragma once

#include <string_view>

#include "Support/definition/FileCFG.h"
#include "programs/check/Report.h"

namespace vemra::check {

// Reports what is wrong in an index list: sections and lines that are not read, folders and files
// that do not exist or map nowhere, patterns that can never match, and what does not agree with the
// file types and the path map of the configuration. configuration holds its file types as its index
// list.
void CheckIndexList(std::string_view bytes, CTavoFileCFG& configuration, FileReport& report);

}  // namespace vemra::check
