#pragma once

#include <stdexcept>
#include <string>

namespace vemra::engine {

enum class Fault {
  kMissing,  // there is no index yet
  kLocked,   // another process is writing it
  kDamaged,  // the file is not an index, or parts of it cannot be read
  kFailed,   // the system refused: no space, no right
};

// What the engine throws. The text is for people and names the file.
class EngineError : public std::runtime_error {
 public:
  EngineError(Fault fault, const std::string& text) : std::runtime_error(text), fault_(fault) {}
  Fault GetFault() const { return fault_; }

 private:
  Fault fault_;
};

}  // namespace vemra::engine
