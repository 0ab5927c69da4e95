#pragma once

#include <stdexcept>
#include <string>

namespace vemra::commands {

// A mistake that the person at the keyboard can mend: in the command line or the configuration. The
// text names the file, and the line where there is one. The program ends with kUsage.
class CommandError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace vemra::commands
