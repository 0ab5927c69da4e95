#include "programs/check/ValueCheck.h"

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <vector>

#include "Support/definition/FieldRule.h"
#include "Support/foundation/HostPath.h"
#include "Support/foundation/Paths.h"
#include "Support/text/LangPack.h"
#include "programs/check/NearestName.h"
#include "programs/check/Patterns.h"
#include "programs/formats/FormatWrapper.h"

namespace vemra::check {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaxValue = 256;  // bytes that INIWorker reads of all but lists

// One value under check.
struct Value {
  const KeyRule& rule;
  std::string subject;  // KEY is "VALUE"
  std::string_view text;
  const Surroundings& surroundings;
  int line;
  FileReport& report;

  void Error(const std::string& fault) const { report.Error(line, subject + ": " + fault); }
  void Warn(const std::string& fault) const { report.Warn(line, subject + ": " + fault); }
};

std::optional<std::int64_t> ParseNumber(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  return number;
}

void CheckRange(const Value& value, std::int64_t low, std::int64_t high) {
  const std::optional<std::int64_t> number = ParseNumber(value.text);
  if (number && *number >= low && *number <= high) return;
  value.Error("expected a number from " + std::to_string(low) + " to " + std::to_string(high));
}

void CheckFlag(const Value& value) {
  if (value.text == "YES" || value.text == "NO") return;
  value.Error(std::string("expected YES or NO, in capitals; ") + value.rule.fallback + " is taken");
}

void CheckTime(const Value& value) {
  int hour = 0, minute = 0, second = 0, day = 0, month = 0, year = 0, length = 0;
  const std::string text(value.text);
  const int numbers = std::sscanf(text.c_str(), "%d:%d:%d %d/%d/%d%n", &hour, &minute, &second,
                                  &day, &month, &year, &length);
  const auto within = [](int number, int low, int high) { return number >= low && number <= high; };
  if (numbers == 6 && static_cast<std::size_t>(length) == text.size() && within(hour, 0, 23) &&
      within(minute, 0, 59) && within(second, 0, 59) && within(day, 1, 31) &&
      within(month, 1, 12) && within(year, 1970, 9999)) {
    return;
  }
  value.Error("expected a time such as 09:05:03 07/03/2024, hour:minute:second day/month/year");
}

// The parts of a list, which commas and blanks separate.
std::vector<std::string> SplitList(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(", "), text.size());
    if (end > 0) words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

void CheckRules(const Value& value) {
  static const std::vector<std::string> kKeywords = SplitList(FormatFieldRules(~0U));
  for (const std::string& word : SplitList(value.text)) {
    if (!value.report.TakesErrors()) return;
    if (ParseFieldRules(word) != 0) continue;
    value.report.Error(value.line,
                       Quoted(word) + " is no field rule and is ignored; the nearest is " +
                           NearestName(word, kKeywords) + " (capitals and small letters count)");
  }
}

void CheckFieldNumber(const Value& value, std::string_view text) {
  const std::optional<std::int64_t> number = ParseNumber(text);
  if (!number || *number < 0 || *number >= kMaxFields) {
    value.Error(Quoted(text) + " is no field; expected a number from 0 to " +
                std::to_string(kMaxFields - 1));
  } else if (value.surroundings.fields != nullptr &&
             value.surroundings.fields->IsSet(static_cast<int>(*number)) == 0) {
    value.Error("there is no field " + std::to_string(*number));
  }
}

void CheckFields(const Value& value) {
  for (const std::string& word : SplitList(value.text)) {
    if (!value.report.TakesErrors()) return;
    CheckFieldNumber(value, word);
  }
}

void CheckLanguage(const Value& value) {
  TavoLangPack::LoadStatus status;
  if (TavoLangPack::Get(std::string(value.text), &status) != nullptr) return;
  value.Error(status.code == TavoLangPack::LoadStatus::kUnknownLanguage
                  ? "no language of this name is registered on this computer"
                  : "the language pack " + ShowPath(status.path) + " cannot be read");
}

enum class Kind { kFile, kFolder };

bool Exists(const std::string& path, Kind kind) {
  std::error_code error;
  const std::string hostPath = ToHostPath(path);
  return kind == Kind::kFile ? fs::is_regular_file(hostPath, error)
                             : fs::is_directory(hostPath, error);
}

void CheckPath(const Value& value, Kind kind) {
  const std::string path = ConnectPaths(value.surroundings.folder, std::string(value.text));
  if (ReportUnmapped(value.subject, path, value.line, value.report)) return;
  // Looking at the disk takes long.
  if (!value.report.TakesWarnings() || Exists(path, kind)) return;
  value.Warn(std::string("there is no ") + (kind == Kind::kFile ? "file " : "folder ") +
             ShowPath(path));
}

void CheckNewFile(const Value& value) {
  const std::string path = ConnectPaths(value.surroundings.folder, std::string(value.text));
  if (ReportUnmapped(value.subject, path, value.line, value.report)) return;
  const std::string folder = path.substr(0, std::min(path.rfind('\\'), path.size()));
  if (Exists(folder + '\\', Kind::kFolder)) return;
  value.Warn("there is no folder " + ShowPath(folder));
}

void CheckTagPath(const Value& value) {
  const std::string fault = TagPathFault(value.text);
  if (!fault.empty()) value.Warn("the pattern can never match: " + fault);
}

bool IsList(ValueKind kind) {
  return kind == ValueKind::kRules || kind == ValueKind::kFields;
}

void CheckKind(const Value& value) {
  switch (value.rule.kind) {
    case ValueKind::kText:
    case ValueKind::kAttributeName:
      return;
    case ValueKind::kFlag:
      return CheckFlag(value);
    case ValueKind::kNumber:
    case ValueKind::kCount:
      return CheckRange(value, value.rule.low, value.rule.high);
    case ValueKind::kColor:
      return CheckRange(value, 0, UINT32_MAX);
    case ValueKind::kTime:
      return CheckTime(value);
    case ValueKind::kRules:
      return CheckRules(value);
    case ValueKind::kFields:
      return CheckFields(value);
    case ValueKind::kParentField:
      if (value.text == "-1") return;
      [[fallthrough]];
    case ValueKind::kField:
      return CheckFieldNumber(value, value.text);
    case ValueKind::kTagPath:
      return CheckTagPath(value);
    case ValueKind::kLanguage:
      return CheckLanguage(value);
    case ValueKind::kFormat:
      if (!FormatWrapper::IsFormat(std::string(value.text))) value.Error("expected HTML or Text");
      return;
    case ValueKind::kNewFile:
      return CheckNewFile(value);
    case ValueKind::kPicture:
      return CheckPath(value, Kind::kFile);
    case ValueKind::kFolder:
      return CheckPath(value, Kind::kFolder);
  }
}

}  // namespace

void CheckValue(const KeyRule& rule, std::string_view key, std::string_view value,
                const Surroundings& surroundings, int line, FileReport& report) {
  if (value.empty()) return;
  const std::string subject = std::string(key) + " is " + Quoted(value);
  const Value checked{rule, subject, value, surroundings, line, report};
  if (value.size() > kMaxValue && !IsList(rule.kind)) {
    checked.Error("only the first " + std::to_string(kMaxValue) + " bytes of it are read");
  } else {
    CheckKind(checked);
  }
}

bool ReportUnmapped(const std::string& subject, const std::string& path, int line,
                    FileReport& report) {
  if (!ToHostPath(path).empty()) return false;
  report.Error(line, subject +
                         ": the path maps nowhere; VEMRA_DRIVES names the drives and shares that "
                         "this computer has");
  return true;
}

}  // namespace vemra::check
