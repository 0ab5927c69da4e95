#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "Support/Export.h"
#include "Support/foundation/VemraConfig.h"

namespace vemra {

class LineFile;

// The levels of log messages and the words that the log has for them. Any other level is written
// without a word.
enum LogLevel : std::uint32_t {
  kLogInformation = 1,  // "Information"
  kLogWarning = 2,      // "Warning"
  kLogError = 3,        // "Error"
  kLogFatalError = 4,   // "Fatal Error"
  kLogNotice = 5,       // "Information" as well: one that the threshold never holds back
};

// Dated messages of a level, in one text file for each database, for the server's administrator.
//
// The files lie in the folder that the registry value "LogFilePath" of the key "Vemra Info\Log"
// names (a Windows path of at most 260 characters, read once at construction). Without the value,
// and when it is empty, nothing is ever logged. A database's file is its name and ".txt"; the one
// for the empty name is Support.txt. A file is opened at the first message for its database,
// created when it is missing, appended to otherwise, and stays open and denied to other writers
// until the log is destroyed.
//
// Messages below the configuration's spy level, 4 while that is 0, are dropped; the spy level is
// asked for at each message, so setting it takes effect at once.
//
// No operation reports failure. A file that cannot be opened is named on the standard output and
// the message is lost; the next message tries again. So it is with a name that holds a backslash, a
// slash, a colon or a control character, since it could lead out of the folder. Names that differ
// only in the case of ASCII letters share a file, and so do the empty name and "Support".
//
// Any thread may log. Every line is one write under a lock of its file, and the table of open files
// has a short lock of its own, so lines are never torn or lost, whatever the callers' lock flags.
// The lock that the flag asks for is the log's own, which orders whole calls: who holds it keeps
// its messages together against all callers that pass 1. It may be taken again by its holder.
class SUPPORT_API TavoLog {
 public:
  // Reads the settings. Programs use GetLog; tests construct their own. The configuration must
  // outlive the log.
  explicit TavoLog(const VemraConfig& config = VemraConfig::GetVemraConfig());
  ~TavoLog();
  TavoLog(const TavoLog&) = delete;
  TavoLog& operator=(const TavoLog&) = delete;

  // The process's log, created on first use and destroyed at process end.
  static TavoLog& GetLog();

  // Whether a message of this level would be written.
  bool IsLogged(std::uint32_t level) const {
    const std::uint32_t spyLevel = config_.GetSpyLevel();
    return !directory_.empty() && level >= (spyLevel == 0 ? kLogFatalError : spyLevel);
  }

  // Writes "<date> <time> <level's word>: <message>" and a line end, date and time as in the C
  // locale. A line end of the message's own is kept, so that an empty line follows. A non-zero lock
  // takes the log's lock for the call.
  void WriteFormattedMessage(std::uint32_t level, const std::string& databaseName, int lock,
                             std::string_view message);
  // The message by the rules of printf.
  void WriteMessage(std::uint32_t level, const std::string& databaseName, int lock,
                    const char* format, ...) SUPPORT_PRINTF(5, 6);

  // The log's own lock, for std::lock_guard.
  void lock() { lock_.lock(); }
  void unlock() { lock_.unlock(); }

 private:
  LineFile* GetFile(const std::string& databaseName);
  std::shared_ptr<LineFile> OpenFile(const std::string& databaseName) const;

  const VemraConfig& config_;
  std::recursive_mutex lock_;
  std::string directory_;
  std::mutex filesMutex_;
  std::unordered_map<std::string, std::shared_ptr<LineFile>> files_;  // by database name
};

}  // namespace vemra
