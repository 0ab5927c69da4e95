#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

// What is found wrong in the files of a definition. Paths are in the Windows form; texts are UTF-8
// and name files as the host does.
namespace vemra::check {

// An error makes the definition unusable or read otherwise than it is written; a warning is
// something that has no effect, or that may be missing only now.
enum class Severity { kWarning, kError };

struct Finding {
  int line;  // from 1; the first line stands for the file as a whole
  Severity severity;
  std::string text;
};

// The findings of one file.
class FileReport {
 public:
  static constexpr std::size_t kMaxFindings = 200;  // of each severity; what follows is dropped

  explicit FileReport(std::string path) : path_(std::move(path)) {}

  void Error(int line, std::string text) { Add(line, Severity::kError, std::move(text)); }
  void Warn(int line, std::string text) { Add(line, Severity::kWarning, std::move(text)); }
  void Add(int line, Severity severity, std::string text);
  // A warning that costs much to word need not be made.
  bool TakesWarnings() const { return warnings_ < kMaxFindings; }
  // Without it, whoever looks through the file may stop.
  bool TakesErrors() const { return errors_ < kMaxFindings; }

  const std::string& GetPath() const { return path_; }
  // By line; those of one line in the order in which they were added. When there may be more, the
  // last one says so.
  std::vector<Finding> GetFindings() const;

 private:
  std::string path_;
  std::vector<Finding> findings_;
  std::size_t warnings_ = 0;
  std::size_t errors_ = 0;
};

// The reports of a definition's files, in the order in which they were opened.
class Report {
 public:
  // The report of the file; references stay valid.
  FileReport& Open(const std::string& path);
  const std::deque<FileReport>& GetFiles() const { return files_; }

 private:
  std::deque<FileReport> files_;
};

// A text of a file, in double quotes, for a message: short, on one line, UTF-8. What is no UTF-8
// and control characters are shown as \xNN.
std::string Quoted(std::string_view text);
// The title of a section likewise, in brackets.
std::string Bracketed(std::string_view title);
// A path in the Windows form as the host has it; quoted as it is when no host file can have it.
std::string ShowPath(const std::string& path);

}  // namespace vemra::check
