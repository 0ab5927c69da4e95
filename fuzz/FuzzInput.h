#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "tests/TempFolder.h"

// What every target needs: its input without a byte to spare, a file that holds it, and a way to
// say that an answer is wrong.
namespace vemra::fuzz {

// A copy of exactly its size, so that a read beyond the end is caught.
class ExactCopy {
 public:
  ExactCopy(const std::uint8_t* data, std::size_t size) : bytes_(new char[size]), size_(size) {
    if (size > 0) std::memcpy(bytes_.get(), data, size);
  }
  std::string_view View() const { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_;
};

// The process's own file, in a folder that goes away with it.
class InputFile {
 public:
  explicit InputFile(std::string_view bytes) {
    test::WriteHostFile(Folder().Host() / "input", std::string(bytes));
  }
  std::string Path() const { return Folder().Path("input"); }
  std::string HostPath() const { return (Folder().Host() / "input").string(); }
  std::string Read() const { return test::ReadHostFile(Folder().Host() / "input"); }

 private:
  static const test::TempFolder& Folder() {
    static const test::TempFolder folder;
    return folder;
  }
};

inline void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::abort();
}

}  // namespace vemra::fuzz
