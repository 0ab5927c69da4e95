#pragma once

#include <iosfwd>

namespace vemra::commands {

// Where a command writes: results to out, everything about its course to err. Text is UTF-8.
struct Console {
  std::ostream& out;
  std::ostream& err;
  bool colour = false;    // out is a terminal that shows colours
  bool progress = false;  // err is a terminal, on which a line can be written over
};

// The process's own streams. Colours only on a terminal, and not when NO_COLOR is set to anything
// or TERM is "dumb".
Console ProcessConsole();

}  // namespace vemra::commands
