#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra index: builds the index of a database anew. A document that cannot be read or parsed is
// reported and skipped; Ctrl-C stops after the current document and keeps what was indexed.
void AddIndexCommand(CLI::App& program, Console& console, int& exitCode);
int RunIndex(const std::string& definition, Console& console);

}  // namespace vemra::commands
