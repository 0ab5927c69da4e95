#include "Support/services/Trace.h"

#include <cstdarg>
#include <cstdio>
#include <system_error>

#include "Support/foundation/Paths.h"
#include "Support/foundation/Registry.h"
#include "Support/services/FormattedText.h"
#include "Support/services/LineFile.h"

namespace vemra {

namespace {

constexpr char kSettings[] = "Vemra Info\\Trace";
constexpr std::size_t kMaxPath = 260;  // characters

}  // namespace

TavoTrace::TavoTrace() {
  GetTavoValue(kSettings, "Level", level_);
  GetTavoValue(kSettings, "Module", moduleMask_);
  if (GetTavoValue(kSettings, "TraceFilePath", path_, kMaxPath) == 0) return;
  if (path_.empty()) path_ = GetAppDirectory() + "\\default.txt";
  try {
    file_ = std::make_unique<LineFile>(path_);
    open_ = 1;
  } catch (const std::system_error& error) {
    std::printf("Couldn't open source file: %s\n", error.what());
  }
}

TavoTrace::~TavoTrace() = default;

TavoTrace& TavoTrace::GetTracer() {
  static TavoTrace tracer;
  return tracer;
}

void TavoTrace::TraceEx(const char* sourceFile, int line, std::uint32_t module, std::uint32_t level,
                        const char* format, ...) {
  if (!IsTraced(module, level)) return;
  std::va_list arguments;
  va_start(arguments, format);
  const FormattedText message(format, arguments);
  va_end(arguments);
  Write(sourceFile, line, message.Get());
}

void TavoTrace::Write(const char* sourceFile, int line, std::string_view message) {
  file_->WriteLine({sourceFile, "(", std::to_string(line), "): ", message});
}

}  // namespace vemra
