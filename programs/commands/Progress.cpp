#include "programs/commands/Progress.h"

#include <cstdio>
#include <ostream>

namespace vemra::commands {
namespace {

constexpr std::chrono::milliseconds kTerminalInterval{200};
constexpr std::chrono::seconds kLineInterval{10};

}  // namespace

Progress::Progress(Console& console, std::int64_t total)
    : console_(console), total_(total), start_(Clock::now()), shown_(start_) {}

double Progress::GetSeconds() const {
  return std::chrono::duration<double>(Clock::now() - start_).count();
}

void Progress::FileDone(std::int64_t bytes) {
  ++files_;
  bytes_ += bytes;
  const Clock::time_point now = Clock::now();
  if (now - shown_ <
      (console_.progress ? Clock::duration(kTerminalInterval) : Clock::duration(kLineInterval))) {
    return;
  }
  shown_ = now;
  Show();
}

void Progress::Show() {
  const double seconds = GetSeconds();
  const double left = seconds / static_cast<double>(files_) * static_cast<double>(total_ - files_);
  const auto secondsLeft = static_cast<long long>(left > 0 ? left + 0.5 : 0);
  char line[160];
  std::snprintf(line, sizeof line, "%lld of %lld files, %.0f files/s, %.1f MB/s, %lld:%02lld left",
                static_cast<long long>(files_), static_cast<long long>(total_),
                static_cast<double>(files_) / seconds, static_cast<double>(bytes_) / seconds / 1e6,
                secondsLeft / 60, secondsLeft % 60);
  if (console_.progress) {
    console_.err << '\r' << line << "\x1b[K" << std::flush;
    isOnLine_ = true;
  } else {
    console_.err << line << std::endl;
  }
}

void Progress::Clear() {
  if (isOnLine_) console_.err << "\r\x1b[K" << std::flush;
  isOnLine_ = false;
}

void Progress::Report(const std::string& line) {
  Clear();
  console_.err << line << '\n';
}

void Progress::Finish() {
  Clear();
}

}  // namespace vemra::commands
