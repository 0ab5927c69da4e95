#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra status: prints a database at a glance. It also serves one whose other files are missing or
// that was never indexed.
struct StatusOptions {
  std::string definition;
  bool json = false;
};

int RunStatus(const StatusOptions& options, Console& console);

void AddStatusCommand(CLI::App& program, Console& console, int& exitCode);

}  // namespace vemra::commands
