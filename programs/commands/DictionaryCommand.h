#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra dictionary: prints the words of the index that begin with a prefix.
struct DictionaryOptions {
  std::string definition;
  std::string prefix;
  std::string field;  // empty: all fields
  int count = 100;
  bool json = false;
};

void AddDictionaryCommand(CLI::App& program, Console& console, int& exitCode);
int RunDictionary(const DictionaryOptions& options, Console& console);

}  // namespace vemra::commands
