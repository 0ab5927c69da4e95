#pragma once

namespace vemra::commands {

// While it lives, Ctrl-C and a request to terminate do not end the process but are remembered; a
// second one ends it as usual. One at a time in a process.
class StopSignal {
 public:
  StopSignal();
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  bool IsSet() const;
};

}  // namespace vemra::commands
