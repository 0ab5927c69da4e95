#pragma once

#include <iosfwd>
#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra access: prints who holds a database, and removes the line of a holder that a person knows
// to be dead.
struct AccessOptions {
  std::string definition;
  bool json = false;
  bool release = false;  // asks for each line, or for that of holder only
  bool yes = false;      // does not ask
  std::string holder;    // as printed: "[Indexing]" or "SERVER7:2F0"; empty: all of them
};

void AddAccessCommand(CLI::App& program, Console& console, int& exitCode);
// answers: where the person's answers come from, a line each.
int RunAccess(const AccessOptions& options, Console& console, std::istream& answers);

}  // namespace vemra::commands
