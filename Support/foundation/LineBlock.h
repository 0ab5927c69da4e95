#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

namespace vemra {

// The length of a line without its trailing line feeds and carriage returns. Not exported.
std::size_t TrimLineEnd(const char* line, std::size_t length);

// Reads lines from a stream as std::fgets does, but takes the file in large blocks and hands the
// lines out in place, which makes short lines several times cheaper. It reads ahead, so the stream
// must be its own. Not exported.
class LineBlock {
 public:
  // The next line without its line end, or at most limit bytes of it, with a NUL after it. It may
  // be changed, and is valid until the next call. *length is the bytes before the first NUL. Null
  // at the end of the file or on a read error, and from then on.
  char* Next(std::FILE* stream, std::size_t limit, std::size_t* length);

 private:
  void Refill(std::FILE* stream);

  std::array<char, 64 * 1024> bytes_;
  std::string cut_;        // a line that has no line end in whose place its NUL could stand
  std::size_t begin_ = 0;  // of what is not yet taken
  std::size_t end_ = 0;
  bool holdsNul_ = false;  // anywhere in the block, which spares text files a look at every line
  bool isAtEnd_ = false;
};

}  // namespace vemra
