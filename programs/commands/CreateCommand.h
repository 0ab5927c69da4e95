#pragma once

#include <string>
#include <vector>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra create: writes the definition of a new database.
struct CreateOptions {
  std::string definition;
  std::vector<std::string> folders;
  std::string filter;    // patterns joined by ';' or ','
  std::string language;  // empty: the usual one
  bool noSubfolders = false;
  bool force = false;
};

void AddCreateCommand(CLI::App& program, Console& console, int& exitCode);
int RunCreate(const CreateOptions& options, Console& console);

}  // namespace vemra::commands
