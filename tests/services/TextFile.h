#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tests/TempFolder.h"

namespace vemra::test {

// A file's text with the line ends of this system taken as one character.
inline std::string ReadTextFile(const std::filesystem::path& path) {
  std::string text = ReadHostFile(path);
  std::erase(text, '\r');
  return text;
}

// Its lines, without their ends.
inline std::vector<std::string> ReadLines(const std::filesystem::path& path) {
  std::istringstream text(ReadTextFile(path));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

}  // namespace vemra::test
