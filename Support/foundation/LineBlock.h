#pragma once

#include <array>
#include <cstddef>
#include <cstdio>

namespace vemra {

// The length of a line without its trailing line feeds and carriage returns. Not exported.
std::size_t TrimLineEnd(const char* line, std::size_t length);

// Reads lines from a stream as std::fgets does, but takes the file in large blocks, which makes
// short lines several times cheaper. It reads ahead, so the stream must be its own. Not exported.
class LineBlock {
 public:
  // Copies the next line, or as much of it as std::fgets would put into size bytes, without its
  // line end, and a NUL after it. *length is the bytes before the first NUL. False at the end of
  // the file or on a read error, and from then on.
  bool Next(std::FILE* stream, char* line, std::size_t size, std::size_t* length);

 private:
  void Refill(std::FILE* stream);

  std::array<char, 64 * 1024> bytes_;
  std::size_t begin_ = 0;  // of what is not yet taken
  std::size_t end_ = 0;
  bool holdsNul_ = false;  // anywhere in the block, which spares text files a look at every line
  bool isAtEnd_ = false;
};

}  // namespace vemra
