#include "programs/check/TableCheck.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "Support/foundation/Ascii.h"
#include "programs/check/NearestName.h"

namespace vemra::check {
namespace {

constexpr std::string_view kNumberMark = "%d";

bool IsNumbered(std::string_view pattern) {
  return pattern.ends_with(kNumberMark);
}

std::string_view Stem(std::string_view pattern) {
  if (IsNumbered(pattern)) pattern.remove_suffix(kNumberMark.size());
  return pattern;
}

std::string NameOf(std::string_view pattern, std::int64_t number) {
  return std::string(Stem(pattern)) + (IsNumbered(pattern) ? std::to_string(number) : "");
}

// A name's own number: what follows the stem, written as the library writes it.
std::optional<std::int64_t> NumberIn(std::string_view name, std::string_view stem) {
  const std::string_view digits = name.substr(stem.size());
  std::int64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto parsed = std::from_chars(digits.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end || std::to_string(number) != digits) {
    return std::nullopt;
  }
  return number;
}

// A rule of the table and the number with which a name fits it.
template <class Rule>
struct Match {
  const Rule* rule = nullptr;
  std::int64_t number = 0;
};

template <class Rule>
Match<Rule> FindRule(std::span<const Rule> rules, std::string_view name) {
  for (const Rule& rule : rules) {
    const std::string_view stem = Stem(rule.name);
    if (!IsNumbered(rule.name)) {
      if (SameName(name, stem)) return {&rule, 0};
    } else if (name.size() > stem.size() && SameName(name.substr(0, stem.size()), stem)) {
      if (const auto number = NumberIn(name, stem)) return {&rule, *number};
    }
  }
  return {};
}

// The known name nearest to one that is not; a number at its end is kept.
template <class Rule>
std::string Nearest(std::span<const Rule> rules, std::string_view name) {
  std::string_view stem = name;
  while (!stem.empty() && IsAsciiDigit(static_cast<unsigned char>(stem.back()))) {
    stem.remove_suffix(1);
  }
  const std::string digits(name.substr(stem.size()));
  std::vector<std::string> known;
  for (const Rule& rule : rules) {
    const std::string first = std::to_string(rule.numbers.first);
    const bool keep = !digits.empty() && digits.front() != '0' && digits.size() < 6;
    known.push_back(IsNumbered(rule.name) ? std::string(Stem(rule.name)) + (keep ? digits : first)
                                          : std::string(rule.name));
  }
  return NearestName(name, known);
}

class TableCheck {
 public:
  TableCheck(const SettingsText& text, FileRule rule, const Surroundings& surroundings,
             FileReport& report)
      : text_(text), rule_(rule), surroundings_(surroundings), report_(report) {}

  void Run() {
    for (const SettingsText::Section& section : text_.GetSections()) {
      if (!report_.TakesErrors()) return;
      CheckSection(section);
    }
    for (const SectionRule& rule : rule_) CheckSectionsThere(rule);
  }

 private:
  using Section = SettingsText::Section;
  using Entry = SettingsText::Entry;

  void CheckSection(const Section& section) {
    if (section.name.empty()) return CheckUntitled(section);
    const auto [rule, number] = FindRule(rule_, section.name);
    if (rule == nullptr) return ReportUnknown(section);
    const Section* first = text_.FindSection(section.name);
    if (first != &section) {
      report_.Warn(section.line, "the section " + Bracketed(section.name) +
                                     " is repeated and not read; the one in line " +
                                     std::to_string(first->line) + " counts");
      return;
    }
    if (!IsInRange(rule->numbers, number, IsNumbered(rule->name), Bracketed(section.name), "",
                   section.line)) {
      return;
    }
    if (rule->anyKey) return;
    for (const Entry& entry : section.entries) {
      if (!report_.TakesErrors()) return;
      CheckEntry(section, *rule, entry);
    }
    for (const KeyRule& key : rule->keys) CheckKeyThere(section, key);
  }

  void CheckUntitled(const Section& section) {
    if (section.entries.empty()) return;
    report_.Warn(section.entries.front().line, "what stands before the first section is not read");
  }

  void CheckEntry(const Section& section, const SectionRule& rule, const Entry& entry) {
    if (!entry.hasValue) {
      report_.Warn(entry.line, Quoted(entry.key) +
                                   " means nothing here; expected a section in [ ], a key with =, "
                                   "or a comment after ;");
      return;
    }
    const auto [key, number] = FindRule(rule.keys, entry.key);
    if (key == nullptr) return ReportUnknown(section, rule, entry);
    const Entry* first = text_.Find(section.name, entry.key);
    if (first != &entry) return ReportRepeated(section, entry, first);
    if (!IsInRange(key->numbers, number, IsNumbered(key->name), std::string(entry.key),
                   section.name, entry.line)) {
      return;
    }
    CheckNeeds(section, *key, entry);
    CheckValue(*key, entry.key, entry.value, surroundings_, entry.line, report_);
  }

  void ReportUnknown(const Section& section) {
    if (!report_.TakesWarnings()) return;
    report_.Warn(section.line, "the section " + Bracketed(section.name) +
                                   " is not read; the nearest known one is " +
                                   Bracketed(Nearest(rule_, section.name)));
  }

  void ReportUnknown(const Section& section, const SectionRule& rule, const Entry& entry) {
    if (!report_.TakesWarnings()) return;
    report_.Warn(entry.line, "the key " + Quoted(entry.key) + " is not read in " +
                                 Bracketed(section.name) + "; the nearest known one is " +
                                 Quoted(Nearest(rule.keys, entry.key)));
  }

  void ReportRepeated(const Section& section, const Entry& entry, const Entry* first) {
    if (first == nullptr) {  // hidden by a line of that name without "="
      report_.Error(entry.line, "the key " + Quoted(entry.key) + " of " + Bracketed(section.name) +
                                    " is not read, since an earlier line holds it without =");
      return;
    }
    report_.Warn(entry.line, "the key " + Quoted(entry.key) +
                                 " is repeated and not read; the one in line " +
                                 std::to_string(first->line) + " counts");
  }

  void CheckNeeds(const Section& section, const KeyRule& rule, const Entry& entry) {
    if (rule.needs == nullptr || entry.value.empty() || entry.value == rule.fallback) return;
    if (!text_.ValueOf(section.name, rule.needs).empty()) return;
    report_.Warn(entry.line,
                 "the key " + Quoted(entry.key) + " is not read without " + Quoted(rule.needs));
  }

  // The section that says how many numbers are read, for a rule or for a key of the section.
  static std::string_view PlaceOfCount(const Numbers& numbers, std::string_view section) {
    return numbers.countSection != nullptr ? std::string_view(numbers.countSection) : section;
  }

  // The last number that is read; nothing when the count is no number.
  std::optional<std::int64_t> LastOf(const Numbers& numbers, std::string_view section) const {
    if (numbers.countKey == nullptr) return numbers.last;
    const std::string count = text_.ValueOf(PlaceOfCount(numbers, section), numbers.countKey);
    if (count.empty()) return numbers.first - 1;
    const auto number = NumberIn(count, "");
    if (!number || *number < 0 || *number > std::numeric_limits<int>::max()) return std::nullopt;
    return numbers.first + *number - 1;
  }

  std::string CountSaid(const Numbers& numbers, std::string_view section) const {
    const std::string_view place = PlaceOfCount(numbers, section);
    const std::string count = text_.ValueOf(place, numbers.countKey);
    return Quoted(numbers.countKey) + " in " + Bracketed(place) + " is " +
           (count.empty() ? "missing" : count);
  }

  bool IsInRange(const Numbers& numbers, std::int64_t number, bool numbered,
                 const std::string& shown, std::string_view section, int line) {
    if (!numbered) return true;
    const auto last = LastOf(numbers, section);
    if (!last || (number >= numbers.first && number <= *last)) return true;
    const std::string why =
        numbers.countKey == nullptr || number < numbers.first
            ? "numbers are from " + std::to_string(numbers.first) +
                  (numbers.countKey == nullptr ? " to " + std::to_string(numbers.last) : " on")
            : CountSaid(numbers, section);
    report_.Warn(line, shown + " is not read: " + why);
    return false;
  }

  // The first name up to the count that is not there; empty when all are.
  template <class IsThere>
  std::string FirstMissing(const char* name, const Numbers& numbers, std::string_view section,
                           IsThere isThere) const {
    const auto last = LastOf(numbers, section);
    if (!last || *last - numbers.first >= kMaxCount) return {};  // said of the count itself
    for (std::int64_t number = numbers.first; number <= *last; ++number) {
      std::string numbered = NameOf(name, number);
      if (!isThere(numbered)) return numbered;
    }
    return {};
  }

  void ReportMissing(const Numbers& numbers, std::string_view section, const std::string& missing,
                     const char* whenMissing) {
    report_.Error(
        text_.LineOf(PlaceOfCount(numbers, section), numbers.countKey),
        CountSaid(numbers, section) + ", but there is no " + missing + "; " + whenMissing);
  }

  void CheckSectionsThere(const SectionRule& rule) {
    if (rule.whenMissing == nullptr) return;
    const auto isThere = [&](const std::string& name) {
      return text_.FindSection(name) != nullptr;
    };
    if (IsNumbered(rule.name)) {
      const std::string missing = FirstMissing(rule.name, rule.numbers, "", isThere);
      if (missing.empty()) return;
      ReportMissing(rule.numbers, "", Bracketed(missing), rule.whenMissing);
    } else if (!isThere(rule.name)) {
      report_.Error(1, "there is no section " + Bracketed(rule.name) + "; " + rule.whenMissing);
    }
  }

  void CheckKeyThere(const Section& section, const KeyRule& rule) {
    if (rule.whenMissing == nullptr) return;
    const auto isThere = [&](const std::string& key) {
      const Entry* entry = text_.Find(section.name, key);
      return entry != nullptr && (rule.mayBeEmpty || !entry->value.empty());
    };
    if (IsNumbered(rule.name)) {
      const std::string missing = FirstMissing(rule.name, rule.numbers, section.name, isThere);
      if (missing.empty()) return;
      ReportMissing(rule.numbers, section.name, Quoted(missing), rule.whenMissing);
    } else if (!isThere(rule.name)) {
      report_.Error(
          text_.LineOf(section.name, rule.name),
          Bracketed(section.name) + " has no " + Quoted(rule.name) + "; " + rule.whenMissing);
    }
  }

  const SettingsText& text_;
  const FileRule rule_;
  const Surroundings& surroundings_;
  FileReport& report_;
};

}  // namespace

void CheckAgainstTable(const SettingsText& text, FileRule rule, const Surroundings& surroundings,
                       FileReport& report) {
  TableCheck(text, rule, surroundings, report).Run();
}

}  // namespace vemra::check
