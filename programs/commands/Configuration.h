#pragma once

#include <string>

#include "Support/definition/FileCFG.h"

namespace vemra::commands {

// path of the .cfg file, in the Windows form. Throws CommandError, naming file and line, when it
// is missing or cannot be loaded.
void LoadConfiguration(const std::string& path, CTavoFileCFG& configuration);

}  // namespace vemra::commands
