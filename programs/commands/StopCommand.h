#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra stop: asks the indexer of a database on this computer to stop. It does not wait for that.
void AddStopCommand(CLI::App& program, Console& console, int& exitCode);
int RunStop(const std::string& definition, Console& console);

}  // namespace vemra::commands
