#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra registry get|set|list|delete|export|import: shows and edits the machine-wide settings. Keys
// are below the root of the store, components parted by backslashes; an empty key is the root.

struct RegistryGetOptions {
  std::string key;
  std::string name;  // empty: the key's value without a name
};
// Prints the data of a value: a text as it is, a number in decimal, bytes in hexadecimal.
// kNothingFound when it is missing.
int RunRegistryGet(const RegistryGetOptions& options, Console& console);

struct RegistrySetOptions {
  std::string key;
  std::string name;
  std::string value;
  std::string type =
      "string";  // string, number (decimal, or hexadecimal after 0x), binary ("01ff")
};
int RunRegistrySet(const RegistrySetOptions& options, Console& console);

struct RegistryListOptions {
  std::string key;
  bool json = false;
};
int RunRegistryList(const RegistryListOptions& options, Console& console);

struct RegistryDeleteOptions {
  std::string key;
  std::string name;
  bool hasName = false;  // false: the key itself
  bool all = false;      // a key with all below it
};
int RunRegistryDelete(const RegistryDeleteOptions& options, Console& console);

struct RegistryExportOptions {
  std::string file;  // a host path
  std::string key;
  bool ansi = false;
};
int RunRegistryExport(const RegistryExportOptions& options, Console& console);

// Changes nothing when any line of the file is wrong.
int RunRegistryImport(const std::string& file, Console& console);

void AddRegistryCommand(CLI::App& program, Console& console, int& exitCode);

}  // namespace vemra::commands
