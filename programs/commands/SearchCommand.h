#pragma once

#include <string>

#include "programs/commands/Console.h"
#include "programs/commands/Excerpt.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra search: prints the texts that match a query, best first or sorted by a field.
struct SearchOptions {
  std::string definition;
  std::string query;
  int count = 10;
  std::string sort;  // by a field, "-" before it for descending; empty: best first
  SummaryKind summary = SummaryKind::kHits;
  bool json = false;
  bool html = false;  // not both
};

void AddSearchCommand(CLI::App& program, Console& console, int& exitCode);
int RunSearch(const SearchOptions& options, Console& console);

}  // namespace vemra::commands
