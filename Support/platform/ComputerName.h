#pragma once

#include <string>

// The name by which this computer is told from others in files that several computers share. Safe
// from any thread.
namespace vemra::platform {

// 1 to 15 characters without blanks. On Linux the host name up to its first dot, in capitals; of a
// longer one the first 11 characters and 4 digits of its fingerprint.
bool GetThisComputerName(std::string* name);

// The same as the system tells it, whatever name is set.
bool ReadComputerName(std::string* name);

// While one exists, this computer has the given name, so that a test can play several computers.
// With an empty name the computer cannot tell its name. One at a time, set while no other thread
// asks.
class SetComputerName {
 public:
  explicit SetComputerName(const std::string& name);
  ~SetComputerName();
  SetComputerName(const SetComputerName&) = delete;
  SetComputerName& operator=(const SetComputerName&) = delete;
};

}  // namespace vemra::platform
