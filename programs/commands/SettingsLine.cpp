#include "programs/commands/SettingsLine.h"

#include <algorithm>
#include <fstream>

#include "programs/commands/HostPaths.h"

namespace vemra::commands {
namespace {

std::string Trim(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(" \t\r");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

int FindLine(const std::string& hostPath, const std::string& section, const std::string& key) {
  std::ifstream file(hostPath, std::ios::binary);
  std::string text;
  int sectionLine = 0;
  bool inSection = false;
  for (int line = 1; std::getline(file, text); ++line) {
    text = Lower(Trim(text));
    if (!text.empty() && text.front() == '[') {
      inSection = text == '[' + Lower(section) + ']';
      if (inSection && sectionLine == 0) sectionLine = line;
    } else if (inSection && Trim(text.substr(0, text.find('='))) == Lower(key)) {
      return line;
    }
  }
  return sectionLine;
}

}  // namespace

std::string AtSetting(const std::string& path, const std::string& section, const std::string& key,
                      const std::string& text) {
  const std::string hostPath = PathForPerson(path);
  const int line = FindLine(hostPath, section, key);
  return hostPath + (line > 0 ? ':' + std::to_string(line) : std::string()) + ": " + text;
}

}  // namespace vemra::commands
