#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra check: reads every file of a definition and prints what is wrong in it, a line a problem.
struct CheckOptions {
  std::string definition;
  bool json = false;
};

// kDone when there are at most warnings, else kUsage.
int RunCheck(const CheckOptions& options, Console& console);

void AddCheckCommand(CLI::App& program, Console& console, int& exitCode);

}  // namespace vemra::commands
