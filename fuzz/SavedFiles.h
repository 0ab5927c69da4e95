#pragma once

#include <string>

#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {

// A file of the process's own to save what was read to.
class SavedFile {
 public:
  explicit SavedFile(const char* name) : name_(name) { std::filesystem::remove(HostPath()); }
  std::string Path() const { return Folder().Path(name_); }
  std::string Read() const { return test::ReadHostFile(HostPath()); }

 private:
  static const test::TempFolder& Folder() {
    static const test::TempFolder folder;
    return folder;
  }
  std::filesystem::path HostPath() const { return Folder().Host() / name_; }

  const char* name_;
};

// rewrite(from, to) loads one file and saves another. What it gave comes out the same again.
// Returns that file.
template <class Rewrite>
std::string CheckStable(const std::string& from, Rewrite rewrite) {
  const SavedFile first("first");
  const SavedFile second("second");
  rewrite(from, first.Path());
  rewrite(first.Path(), second.Path());
  const std::string bytes = first.Read();
  Check(!bytes.empty() && second.Read() == bytes, "a file saved, loaded and saved again");
  return bytes;
}

}  // namespace vemra::fuzz
