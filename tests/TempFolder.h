#pragma once

#include <filesystem>
#include <string>

namespace vemra::test {

// A new empty folder of the test's own, removed with all it holds at the end.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Host() const { return host_; }
  // The folder, or a file below it, in the library's path form. name uses backslashes.
  std::string Path() const;
  std::string Path(const std::string& name) const;

 private:
  std::filesystem::path host_;
};

// Whole files by host path, byte for byte.
std::string ReadHostFile(const std::filesystem::path& path);
void WriteHostFile(const std::filesystem::path& path, const std::string& bytes);

}  // namespace vemra::test
