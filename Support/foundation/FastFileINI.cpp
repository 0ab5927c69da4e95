#include "Support/foundation/FastFileINI.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "Support/foundation/File.h"

namespace vemra {

namespace {

// Empty as well when the file cannot be opened.
bool ReadWhole(const std::string& path, std::string& bytes) try {
  TavoFile file(path, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting,
                TavoFile::Share::kDenyWrite);
  bytes.resize(std::size_t(file.GetLength()));
  bytes.resize(file.Read(bytes.data(), bytes.size()));
  return true;
} catch (const std::system_error&) {
  return false;
}

// Takes the first line, without its line end, off text.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view SkipBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace

CTavoFastFileINI::~CTavoFastFileINI() {
  if (modified_ != 0) Save();
}

void CTavoFastFileINI::Open(const std::string& path) {
  path_ = path;
  std::string bytes;
  if (!ReadWhole(path, bytes)) return;

  std::string name;
  KeyMap keys;
  bool hasKeyLine = false;  // since the last title
  for (std::string_view rest = bytes; !rest.empty();) {
    const std::string_view line = TakeLine(rest);
    const std::size_t mark = line.find_first_of(";[=");
    if (mark == std::string_view::npos || line[mark] == ';') continue;
    if (line[mark] == '[') {
      if (hasKeyLine) sections_[std::exchange(name, {})] = std::exchange(keys, {});
      hasKeyLine = false;
      const std::string_view title = line.substr(mark + 1);
      name += title.substr(0, title.find(']'));
    } else {
      const std::string_view key = SkipBlanks(line.substr(0, mark));
      keys.insert_or_assign(std::string(key), std::string(SkipBlanks(line.substr(mark + 1))));
      hasKeyLine = true;
    }
  }
  sections_[name] = std::move(keys);
}

const std::string* CTavoFastFileINI::Find(const std::string& section,
                                          const std::string& key) const {
  const auto keys = sections_.find(section);
  if (keys == sections_.end()) return nullptr;
  const auto value = keys->second.find(key);
  return value == keys->second.end() ? nullptr : &value->second;
}

unsigned CTavoFastFileINI::GetInt(const std::string& section, const std::string& key,
                                  unsigned fallback) const {
  const std::string* const value = Find(section, key);
  return value == nullptr ? fallback : static_cast<unsigned>(std::atoi(value->c_str()));
}

std::string CTavoFastFileINI::GetString(const std::string& section, const std::string& key,
                                        const std::string& fallback) const {
  const std::string* const value = Find(section, key);
  return value == nullptr ? fallback : *value;
}

void CTavoFastFileINI::SetInt(const std::string& section, const std::string& key, int value) {
  SetString(section, key, std::to_string(value));
}

void CTavoFastFileINI::SetString(const std::string& section, const std::string& key,
                                 const std::string& value) {
  modified_ = 1;
  if (Find(section, key) != nullptr) sections_[section][key] = value;
}

void CTavoFastFileINI::Save() try {
  std::string text;
  for (const auto& [name, keys] : sections_) {
    text.append("[").append(name).append("]\n");
    for (const auto& [key, value] : keys) text.append(key).append("=").append(value).append("\n");
  }
  TavoFile file(path_, TavoFile::Access::kWrite, TavoFile::Creation::kOpenExisting,
                TavoFile::Share::kDenyRead);
  // In text mode, so that the lines end as those of the system's other text files do.
  std::FILE* const stream = file.OpenStream("at");
  if (stream == nullptr) return;
  const bool written = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
  if (std::fclose(stream) == 0 && written) modified_ = 0;
} catch (const std::system_error&) {
  // No report: the caller finds the file as it was.
}

}  // namespace vemra
