#include "Support/services/Trace.h"

#include <cstdarg>
#include <system_error>

#include "Support/foundation/DateTime.h"
#include "Support/foundation/Paths.h"
#include "Support/foundation/Registry.h"

namespace vemra {

namespace {

constexpr char kSettings[] = "Vemra Info\\Trace";
constexpr std::size_t kMaxPath = 260;  // characters

// The date and time as "%x %X" gives them in the C locale.
std::string Stamp() {
  const LocalTime now = DateTime::Now().GetLocal();
  char text[80];
  std::snprintf(text, sizeof text, "%02d/%02d/%02d %02d:%02d:%02d", now.month, now.day,
                now.year % 100, now.hour, now.minute, now.second);
  return text;
}

}  // namespace

TavoTrace::TavoTrace() {
  GetTavoValue(kSettings, "Level", level_);
  GetTavoValue(kSettings, "Module", moduleMask_);
  if (GetTavoValue(kSettings, "TraceFilePath", path_, kMaxPath) != 0) Open();
}

TavoTrace::~TavoTrace() {
  if (stream_ != nullptr) std::fclose(stream_);
}

TavoTrace& TavoTrace::GetTracer() {
  static TavoTrace tracer;
  return tracer;
}

void TavoTrace::Open() {
  if (path_.empty()) path_ = GetAppDirectory() + "\\default.txt";
  try {
    file_.Open(path_, TavoFile::Access::kWrite, TavoFile::Creation::kOpenOrCreate,
               TavoFile::Share::kDenyWrite);
    stream_ = file_.OpenStream("at");
    open_ = stream_ != nullptr ? 1 : 0;
  } catch (const std::system_error& error) {
    std::printf("Couldn't open source file: %s\n", error.what());
  }
}

void TavoTrace::TraceEx(const char* sourceFile, int line, std::uint32_t module, std::uint32_t level,
                        const char* format, ...) {
  if (!IsTraced(module, level)) return;
  va_list arguments;
  va_start(arguments, format);
  // The analyzer does not see that va_start has set it.
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);
  if (length < 0) return;
  std::string message(std::size_t(length), '\0');
  va_start(arguments, format);
  std::vsnprintf(message.data(), message.size() + 1, format, arguments);
  va_end(arguments);
  Write(sourceFile, line, message);
}

void TavoTrace::Write(const char* sourceFile, int line, std::string_view message) {
  std::string text = Stamp();
  text.append(" ").append(sourceFile).append("(").append(std::to_string(line)).append("): ");
  text.append(message).append("\n");
  std::fwrite(text.data(), 1, text.size(), stream_);
  std::fflush(stream_);
}

}  // namespace vemra
