#pragma once

#include <string>
#include <vector>

#include "programs/commands/Console.h"

namespace vemra::commands {

// Runs the program: arguments are those after its name. Returns an ExitCode; nothing is thrown.
int RunProgram(std::vector<std::string> arguments, Console& console);

}  // namespace vemra::commands
