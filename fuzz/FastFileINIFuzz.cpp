#include <cstdlib>
#include <map>
#include <sstream>
#include <string>

#include "Support/foundation/FastFileINI.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

using Keys = std::map<std::string, std::string>;
using Sections = std::map<std::string, Keys>;

std::string WithoutLeadingBlanks(const std::string& text) {
  std::size_t at = 0;
  while (at < text.size() && text[at] == ' ') ++at;
  return text.substr(at);
}

// The rules of reading, told plainly.
Sections PlainRead(std::string_view bytes) {
  Sections sections;
  std::string name;
  Keys keys;
  bool hasKey = false;
  std::istringstream input{std::string(bytes)};
  for (std::string line; std::getline(input, line);) {
    if (!input.eof() && !line.empty() && line.back() == '\r') line.pop_back();
    const std::size_t mark = line.find_first_of(";[=");
    if (mark == std::string::npos || line[mark] == ';') continue;
    if (line[mark] == '=') {
      keys[WithoutLeadingBlanks(line.substr(0, mark))] =
          WithoutLeadingBlanks(line.substr(mark + 1));
      hasKey = true;
      continue;
    }
    if (hasKey) {
      sections[name] = keys;
      name.clear();
      keys.clear();
      hasKey = false;
    }
    for (std::size_t i = mark + 1; i < line.size() && line[i] != ']'; ++i) name += line[i];
  }
  sections[name] = keys;
  return sections;
}

std::string PlainSave(const Sections& sections) {
  std::string text;
  for (const auto& [name, keys] : sections) {
    text += "[" + name + "]\n";
    for (const auto& [key, value] : keys) text += key + "=" + value + "\n";
  }
  return text;
}

void CheckAnswers(const CTavoFastFileINI& file, const Sections& sections) {
  for (const auto& [name, keys] : sections) {
    for (const auto& [key, value] : keys) {
      Check(file.GetString(name, key, "none") == value, "a value");
      Check(file.GetInt(name, key, 7) == unsigned(std::atoi(value.c_str())), "a number");
    }
    // No key holds a "=", and no title a "]".
    Check(file.GetString(name, "no=key", "none") == "none", "a missing key");
  }
}

// The sections are written as text, whose line ends are the system's.
std::string WithoutReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

void Run(std::string_view bytes) {
  const InputFile input(bytes);
  Sections sections = PlainRead(bytes);
  {
    CTavoFastFileINI file;
    file.Open(input.Path());
    CheckAnswers(file, sections);
    file.SetString("no]section", "key", "value");
    if (!sections.begin()->second.empty()) {
      auto& [key, value] = *sections.begin()->second.begin();
      value = "-5";
      file.SetInt(sections.begin()->first, key, -5);
    }
  }
  const std::string after = input.Read();
  Check(after.starts_with(bytes), "what the file held");
  Check(WithoutReturns(after.substr(bytes.size())) == WithoutReturns(PlainSave(sections)),
        "the appended sections");
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
