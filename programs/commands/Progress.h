#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "programs/commands/Console.h"

namespace vemra::commands {

// Reports how far an indexing run has come: one line that is written over on a terminal, about five
// times a second; a line every ten seconds elsewhere.
class Progress {
 public:
  // total: the files that there are to index.
  Progress(Console& console, std::int64_t total);

  void FileDone(std::int64_t bytes);
  // A message that stays, above the progress.
  void Report(const std::string& line);
  // Clears the progress line.
  void Finish();

  double GetSeconds() const;

 private:
  using Clock = std::chrono::steady_clock;

  void Show();
  void Clear();

  Console& console_;
  std::int64_t total_;
  std::int64_t files_ = 0;
  std::int64_t bytes_ = 0;
  Clock::time_point start_;
  Clock::time_point shown_;
  bool isOnLine_ = false;
};

}  // namespace vemra::commands
