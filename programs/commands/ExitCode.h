#pragma once

namespace vemra::commands {

// What the program's exit codes mean. Scripts rely on them.
enum ExitCode {
  kDone = 0,          // found, or done
  kNothingFound = 1,  // nothing found, or stopped before the end
  kUsage = 2,         // the command line, the query, or the configuration is wrong
  kLocked = 3,        // somebody else holds the database, or writes the index
  kDamaged = 4,       // the index is damaged
};

}  // namespace vemra::commands
