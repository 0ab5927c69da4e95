#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Support/Export.h"
#include "Support/services/TraceModules.h"

namespace vemra {

class LineFile;

// Developer trace lines, filtered by a level and a mask of module bits, in one text file.
//
// The settings are values of the registry key "Vemra Info\Trace", read once at construction:
// "TraceFilePath" (a Windows path of at most 260 characters; empty means default.txt beside the
// running program; without the value tracing is off), "Level" and "Module" (numbers, 0 when
// missing). The file is created when it is missing, appended to otherwise, and denied to other
// writers. When it cannot be opened the standard output says so, and tracing stays off.
//
// Any thread may trace; a line is one write and is never torn. No operation reports failure.
class SUPPORT_API TavoTrace {
 public:
  // Reads the settings. Programs use GetTracer; tests construct their own.
  TavoTrace();
  ~TavoTrace();
  TavoTrace(const TavoTrace&) = delete;
  TavoTrace& operator=(const TavoTrace&) = delete;

  // The process's trace, created on first use and destroyed at process end.
  static TavoTrace& GetTracer();

  // Whether a message of this module and level would be written.
  bool IsTraced(std::uint32_t module, std::uint32_t level) const {
    return open_ != 0 && (module & moduleMask_) != 0 && level >= level_;
  }

  // Writes "<date> <time> <source file>(<line>): <message>" and a line end, date and time as in the
  // C locale. A line end of the message's own is kept, so that an empty line follows.
  void Trace(const char* sourceFile, int line, std::uint32_t module, std::uint32_t level,
             std::string_view message) {
    if (IsTraced(module, level)) Write(sourceFile, line, message);
  }
  // The message by the rules of printf.
  void TraceEx(const char* sourceFile, int line, std::uint32_t module, std::uint32_t level,
               const char* format, ...) SUPPORT_PRINTF(6, 7);

 private:
  void Write(const char* sourceFile, int line, std::string_view message);

  std::string path_;
  std::unique_ptr<LineFile> file_;
  int open_ = 0;
  std::uint32_t level_ = 0;
  std::uint32_t moduleMask_ = 0;
};

}  // namespace vemra
