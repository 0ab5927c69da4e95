#include "Support/services/Profiler.h"

#include <cstdio>
#include <system_error>

#include "Support/foundation/File.h"
#include "Support/platform/Clock.h"
#include "Support/platform/Errors.h"

namespace vemra {

namespace {

constexpr std::size_t kMaxName = 100;           // bytes
constexpr float kTicksPerWrap = 4294967296.0F;  // milliseconds until the tick count starts again

bool AppendToProfilerFile(std::string_view text) {
  try {
    TavoFile file("profiler.log", TavoFile::Access::kWrite, TavoFile::Creation::kOpenOrCreate,
                  TavoFile::Share::kDenyWrite);
    file.Seek(0, TavoFile::Origin::kEnd);
    file.Write(text.data(), text.size());
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

}  // namespace

void CProfiler::Start(const char* name) {
  start_ = static_cast<float>(platform::GetTickMilliseconds());
  name_ = name == nullptr ? "The operation" : name;
  if (name_.size() > kMaxName) name_.resize(kMaxName);
}

std::int64_t CProfiler::Stop() const {
  float elapsed = static_cast<float>(platform::GetTickMilliseconds()) - start_;
  if (elapsed < 0) elapsed += kTicksPerWrap;
  if (enabled_ != 0) {
    char text[kMaxName + 50];
    std::snprintf(text, sizeof text, "%s took %.2f seconds.\r\n", name_.c_str(),
                  static_cast<double>(elapsed) / 1000);
    platform::WriteDebugOutput(text);
    if (options_ != kDebuggerOnly && !AppendToProfilerFile(text)) return 0;
  }
  return static_cast<std::int64_t>(elapsed);
}

}  // namespace vemra
