#include "Support/services/AccessLines.h"

#include <algorithm>

namespace vemra {
namespace {

constexpr std::size_t kLongestComment = 80;  // with its line end

std::size_t RoomOnPage(const std::string& text) {
  return kAccessPage - text.size() % kAccessPage;
}

}  // namespace

bool AccessLines::Next(const char** line) {
  std::size_t size = 0;
  while (!rest_.empty() && size < kBufferSize - 1) {
    if (rest_.starts_with("\r\n")) rest_.remove_prefix(1);
    const char c = rest_.front();
    rest_.remove_prefix(1);
    buffer_[size++] = c;
    if (c == '\n') break;
  }
  buffer_[size] = '\0';
  *line = buffer_;
  return size > 0;
}

void AddAccessLine(const std::string& line, std::string& text) {
  const std::size_t room = RoomOnPage(text);
  // One byte would be too small for a comment with its line end.
  const bool fits = line.size() <= room && room - line.size() != 1;
  if (!fits) FillAccessText(text.size() + room, text);
  text += line;
}

void FillAccessText(std::size_t size, std::string& text) {
  while (text.size() < size) {
    const std::size_t wanted = std::min(size - text.size(), RoomOnPage(text));
    std::size_t length = std::min(wanted, kLongestComment);
    if (wanted - length == 1) --length;
    text += length == 1 ? ";" : ';' + std::string(length - 2, ' ') + '\n';
  }
}

}  // namespace vemra
