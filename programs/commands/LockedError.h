#pragma once

#include <stdexcept>

namespace vemra::commands {

// Somebody else holds the database. The text is for people and names the holder. The program ends
// with kLocked.
class LockedError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace vemra::commands
