#pragma once

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra config: prints the server's configuration and where each value comes from.
int RunConfig(bool json, Console& console);

void AddConfigCommand(CLI::App& program, Console& console, int& exitCode);

}  // namespace vemra::commands
