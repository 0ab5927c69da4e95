#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How the access file is cut into lines, and its lines are laid out on the disk.
namespace vemra {

// Hands out the lines of an access file as fgets with a buffer of 100 bytes would, read in text
// mode: at most 99 characters at once, with the line end, which is "\n" for either kind of it. Only
// what is before a NUL is seen of a line.
class AccessLines {
 public:
  // The text is a loan.
  explicit AccessLines(std::string_view text) : rest_(text) {}

  // False at the end. line is valid until the next call.
  bool Next(const char** line);

 private:
  static constexpr std::size_t kBufferSize = 100;

  std::string_view rest_;
  char buffer_[kBufferSize];
};

// The system writes a page of a file at once or not at all, but may end a process between two
// pages. So no line crosses from one page into the next.
inline constexpr std::size_t kAccessPage = 4096;

// Adds a line, and before it a comment that fills the page when the line would cross it.
void AddAccessLine(const std::string& line, std::string& text);

// Adds comments until the text has this size.
void FillAccessText(std::size_t size, std::string& text);

}  // namespace vemra
