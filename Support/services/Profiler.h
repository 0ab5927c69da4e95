#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"

namespace vemra {

// Where a profiler reports to besides the debugger.
enum ELogOptions : int {
  kDebuggerOnly = 0,
  kProfilerFile = 1,  // and any other value but 0
};

// Measures how long one operation takes and reports it as "<name> took <seconds> seconds.", the
// seconds with two decimals, and the line end CR LF: to the debugger (on Linux to the standard
// error output) and, when asked, at the end of the file profiler.log in the current folder.
//
// Used by one thread at a time. A copy measures on its own from the same start.
class SUPPORT_API CProfiler {
 public:
  explicit CProfiler(ELogOptions options = kDebuggerOnly) : options_(options) {}

  // A profiler that is not enabled measures but reports nothing. Enabled at first.
  void SetEnabled(int enabled) { enabled_ = enabled; }

  // Starts anew. The name is cut to 100 bytes; null stands for "The operation".
  void Start(const char* name = nullptr);

  // Reports and returns the milliseconds since the start. The start is a single-precision number:
  // kept, so that the figures stay comparable; on a computer that has been up for five hours it is
  // exact to 1 ms, after a week to 64 ms. Times beyond 49.7 days are not told from shorter ones.
  // Returns 0 when the file is asked for and cannot be opened or written, as while another profiler
  // has it open.
  std::int64_t Stop() const;

 private:
  int enabled_ = 1;
  ELogOptions options_;
  float start_ = 0;  // milliseconds of the system's tick count
  std::string name_;
};

}  // namespace vemra
