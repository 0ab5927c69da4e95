#include "programs/check/SettingsText.h"

#include <utility>

#include "Support/foundation/Ascii.h"
#include "programs/check/NearestName.h"

namespace vemra::check {
namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

bool IsSpace(char c) {
  return IsAsciiSpace(static_cast<unsigned char>(c)) || c == '\x1a';
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view Unquote(std::string_view text) {
  const bool quoted = text.size() >= 2 && (text.front() == '"' || text.front() == '\'') &&
                      text.front() == text.back();
  return quoted ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

SettingsText::SettingsText(std::string bytes) : bytes_(std::move(bytes)) {
  Parse();
  Index();
}

void SettingsText::Parse() {
  sections_.emplace_back();
  std::string_view rest = bytes_;
  if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
  for (int number = 1; !rest.empty(); ++number) {
    const std::size_t end = rest.find_first_of("\r\n");
    ParseLine(rest.substr(0, end), number);
    if (end == std::string_view::npos) return;
    rest.remove_prefix(rest.substr(end).starts_with("\r\n") ? end + 2 : end + 1);
  }
}

void SettingsText::ParseLine(std::string_view line, int number) {
  line = Trim(line.substr(0, line.find('\0')));
  if (line.empty() || line.starts_with(';')) return;
  if (line.starts_with('[') && line.find(']') != std::string_view::npos) {
    Section& section = sections_.emplace_back();
    section.name = Trim(line.substr(1, line.rfind(']') - 1));
    section.line = number;
    return;
  }
  Entry entry;
  entry.line = number;
  const std::size_t equals = line.find('=');
  entry.hasValue = equals != std::string_view::npos;
  entry.key = Trim(line.substr(0, equals));
  if (entry.hasValue) entry.value = Unquote(Trim(line.substr(equals + 1)));
  sections_.back().entries.push_back(entry);
}

void SettingsText::Index() {
  for (std::size_t i = 0; i < sections_.size(); ++i) {
    sectionIndex_.emplace(FoldCase(sections_[i].name), i);
    Lookup& keys = entryIndex_.emplace_back();
    const std::vector<Entry>& entries = sections_[i].entries;
    for (std::size_t k = 0; k < entries.size(); ++k) keys.emplace(FoldCase(entries[k].key), k);
  }
}

const SettingsText::Section* SettingsText::FindSection(std::string_view name) const {
  const auto found = sectionIndex_.find(FoldCase(name));
  return found == sectionIndex_.end() ? nullptr : &sections_[found->second];
}

const SettingsText::Entry* SettingsText::Find(std::string_view section,
                                              std::string_view key) const {
  const Section* place = FindSection(section);
  if (place == nullptr) return nullptr;
  const Lookup& keys = entryIndex_[static_cast<std::size_t>(place - sections_.data())];
  const auto found = keys.find(FoldCase(key));
  if (found == keys.end()) return nullptr;
  const Entry& entry = place->entries[found->second];
  return entry.hasValue ? &entry : nullptr;
}

std::string SettingsText::ValueOf(std::string_view section, std::string_view key) const {
  const Entry* entry = Find(section, key);
  return entry == nullptr ? std::string() : std::string(entry->value);
}

int SettingsText::LineOf(std::string_view section, std::string_view key) const {
  if (const Entry* entry = Find(section, key)) return entry->line;
  const Section* place = FindSection(section);
  return place == nullptr ? 1 : place->line;
}

}  // namespace vemra::check
