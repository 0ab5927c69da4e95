#include "Support/services/Log.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <system_error>

#include "Support/foundation/Errors.h"
#include "Support/foundation/Registry.h"
#include "Support/platform/Errors.h"
#include "Support/platform/Paths.h"
#include "Support/platform/Process.h"
#include "Support/services/FormattedText.h"
#include "Support/services/LineFile.h"

namespace vemra {

namespace {

constexpr char kSettings[] = "Vemra Info\\Log";
constexpr std::size_t kMaxPath = 260;  // characters

std::string_view LevelWord(std::uint32_t level) {
  constexpr std::string_view kWords[] = {"",      "Information", "Warning",
                                         "Error", "Fatal Error", "Information"};
  return level < std::size(kWords) ? kWords[level] : "";
}

// Database names come from outside; one that is also a path must not choose the folder.
bool IsFileName(const std::string& name) {
  return std::none_of(name.begin(), name.end(),
                      [](unsigned char c) { return c < ' ' || c == '\\' || c == '/' || c == ':'; });
}

}  // namespace

TavoLog::TavoLog(const VemraConfig& config) : config_(config) {
  GetTavoValue(kSettings, "LogFilePath", directory_, kMaxPath);
}

TavoLog::~TavoLog() = default;

TavoLog& TavoLog::GetLog() {
  static TavoLog log;
  return log;
}

void TavoLog::WriteMessage(std::uint32_t level, const std::string& databaseName, int lock,
                           const char* format, ...) {
  if (!IsLogged(level)) return;
  std::va_list arguments;
  va_start(arguments, format);
  const FormattedText message(format, arguments);
  va_end(arguments);
  WriteFormattedMessage(level, databaseName, lock, message.Get());
}

void TavoLog::WriteFormattedMessage(std::uint32_t level, const std::string& databaseName, int lock,
                                    std::string_view message) {
  if (!IsLogged(level)) return;
  std::unique_lock guard(lock_, std::defer_lock);
  if (lock != 0) guard.lock();
  LineFile* const file = GetFile(databaseName);
  if (file != nullptr) file->WriteLine({LevelWord(level), ": ", message});
}

// The file stays until the log is destroyed. Null when it cannot be opened.
LineFile* TavoLog::GetFile(const std::string& databaseName) {
  const std::lock_guard guard(filesMutex_);
  const auto found = files_.find(databaseName);
  if (found != files_.end()) return found->second.get();
  const std::shared_ptr<LineFile> file = OpenFile(databaseName);
  if (file != nullptr) files_.emplace(databaseName, file);
  return file.get();
}

std::shared_ptr<LineFile> TavoLog::OpenFile(const std::string& databaseName) const {
  const std::string& name = databaseName.empty() ? platform::kLibraryBaseName : databaseName;
  const std::string path = directory_ + "\\" + name + ".txt";
  // Two names of one file: the log must not deny it to itself.
  for (const auto& [otherName, file] : files_) {
    if (platform::IsSameName(file->GetPath(), path)) return file;
  }
  try {
    if (!IsFileName(name)) {
      throw std::system_error(int{platform::kInvalidName}, SystemErrorCategory(), path);
    }
    return std::make_shared<LineFile>(path);
  } catch (const std::system_error& error) {
    std::printf("Couldn't open file:%s\n", error.what());
    return nullptr;
  }
}

}  // namespace vemra
