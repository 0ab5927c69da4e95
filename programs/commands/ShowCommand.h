#pragma once

#include <cstdint>
#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra show: writes one document with the hits of a query highlighted and numbered.
struct ShowOptions {
  std::string definition;
  std::int64_t number = 0;
  std::string query;  // empty: nothing is highlighted
  bool html = false;
};

void AddShowCommand(CLI::App& program, Console& console, int& exitCode);
int RunShow(const ShowOptions& options, Console& console);

}  // namespace vemra::commands
