#pragma once

#include <string>

#include "programs/check/Report.h"

namespace vemra::check {

// Reads every file of a database's definition, from the configuration at the path (in the Windows
// form) on, and reports what is wrong in them. Changes nothing. When the configuration cannot be
// loaded, the other files are not known and not read.
Report CheckDefinition(const std::string& path);

}  // namespace vemra::check
