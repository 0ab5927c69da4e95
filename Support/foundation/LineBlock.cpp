#include "Support/foundation/LineBlock.h"

#include <algorithm>
#include <cstring>

namespace vemra {

std::size_t TrimLineEnd(const char* line, std::size_t length) {
  while (length > 0 && (line[length - 1] == '\n' || line[length - 1] == '\r')) --length;
  return length;
}

char* LineBlock::Next(std::FILE* stream, std::size_t limit, std::size_t* length) {
  if (end_ - begin_ < limit && !isAtEnd_) Refill(stream);
  if (begin_ == end_) return nullptr;
  char* line = bytes_.data() + begin_;
  const std::size_t available = std::min(limit, end_ - begin_);
  const void* const feed = std::memchr(line, '\n', available);
  const std::size_t taken =
      feed == nullptr ? available
                      : static_cast<std::size_t>(static_cast<const char*>(feed) - line) + 1;
  begin_ += taken;
  *length = TrimLineEnd(line, taken);
  if (*length == taken) line = cut_.assign(line, taken).data();
  line[*length] = '\0';
  if (holdsNul_) *length = TrimLineEnd(line, std::strlen(line));
  return line;
}

void LineBlock::Refill(std::FILE* stream) {
  end_ -= begin_;
  std::memmove(bytes_.data(), bytes_.data() + begin_, end_);
  begin_ = 0;
  const std::size_t wanted = bytes_.size() - end_;
  const std::size_t got = std::fread(bytes_.data() + end_, 1, wanted, stream);
  isAtEnd_ = got < wanted;
  end_ += got;
  holdsNul_ = std::memchr(bytes_.data(), '\0', end_) != nullptr;
}

}  // namespace vemra
