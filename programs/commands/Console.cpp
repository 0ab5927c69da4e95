#include "programs/commands/Console.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace vemra::commands {
namespace {

bool WantsColour() {
  const char* noColour = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return (noColour == nullptr || *noColour == '\0') &&
         (terminal == nullptr || std::string_view(terminal) != "dumb");
}

}  // namespace

Console ProcessConsole() {
  return {std::cout, std::cerr, isatty(STDOUT_FILENO) != 0 && WantsColour(),
          isatty(STDERR_FILENO) != 0};
}

}  // namespace vemra::commands
