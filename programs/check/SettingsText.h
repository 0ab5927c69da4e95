#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vemra::check {

// A settings file with the numbers of its lines. It reads as INIWorker does: see docs/settings.md
// for the rules. Lines end at LF, CR LF and CR.
class SettingsText {
 public:
  struct Entry {
    std::string_view key;
    std::string_view value;  // without white space and one pair of quotes around it
    int line = 0;
    bool hasValue = false;  // there is a "="; without one the line means nothing
  };
  struct Section {
    std::string_view name;
    int line = 1;
    std::vector<Entry> entries;  // without comments and blank lines
  };

  explicit SettingsText(std::string bytes);
  SettingsText(const SettingsText&) = delete;  // views into the text
  SettingsText& operator=(const SettingsText&) = delete;

  // In the order of the file, repeated ones too. The first has the empty name, and what stands
  // before the first title.
  const std::vector<Section>& GetSections() const { return sections_; }
  // The one that counts: the first of the name, without regard to ASCII case. Null when there is
  // none.
  const Section* FindSection(std::string_view name) const;
  const Entry* Find(std::string_view section, std::string_view key) const;
  // The value; empty when the key is missing.
  std::string ValueOf(std::string_view section, std::string_view key) const;
  // Where a message about the key points: its line, else that of the section's title, else 1.
  int LineOf(std::string_view section, std::string_view key) const;

 private:
  using Lookup = std::unordered_map<std::string, std::size_t>;

  void Parse();
  void ParseLine(std::string_view line, int number);
  void Index();

  std::string bytes_;
  std::vector<Section> sections_;
  Lookup sectionIndex_;             // by folded name
  std::vector<Lookup> entryIndex_;  // of each section, by folded key
};

}  // namespace vemra::check
