#include "tests/TempFolder.h"

#include <fstream>
#include <random>
#include <sstream>

#include "Support/foundation/HostPath.h"

namespace vemra::test {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
  std::random_device random;
  do {
    host_ = fs::temp_directory_path() / ("vemra-test-" + std::to_string(random()));
  } while (!fs::create_directory(host_));
  host_ = fs::canonical(host_);
}

TempFolder::~TempFolder() {
  std::error_code ignored;  // a file still held open must not fail a test that has passed
  fs::remove_all(host_, ignored);
}

std::string TempFolder::Path() const {
  return FromHostPath(host_.string());
}

std::string TempFolder::Path(const std::string& name) const {
  return Path() + "\\" + name;
}

std::string ReadHostFile(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

void WriteHostFile(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
}

}  // namespace vemra::test
