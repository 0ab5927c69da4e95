#pragma once

#include <string>

#include "programs/commands/Console.h"

namespace CLI {
class App;
}

namespace vemra::commands {

// vemra pack: shows what a language pack makes of the 256 bytes, and names each line of its file
// that cannot be read, which otherwise is skipped without a word. pack is a language's name or the
// host path of a file. kUsage when there is such a line.
int RunPack(const std::string& pack, bool json, Console& console);

void AddPackCommand(CLI::App& program, Console& console, int& exitCode);

}  // namespace vemra::commands
