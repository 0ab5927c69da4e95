#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// How long an indexer waits unless told otherwise, in seconds: longer than the access of a dead one
// of this program lasts.
inline constexpr int kDefaultWait = 330;

// vemra index: builds the index of a database anew. While others hold the database it waits, and
// says for whom and how long. A document that cannot be read or parsed is reported and skipped;
// Ctrl-C and vemra stop end it after the current document and keep what was indexed.
struct IndexOptions {
  std::string definition;
  int wait = kDefaultWait;
};

void AddIndexCommand(CLI::App& program, Console& console, int& exitCode);
int RunIndex(const IndexOptions& options, Console& console);

}  // namespace vemra::commands
