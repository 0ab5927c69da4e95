#include "programs/check/ConfigurationCheck.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <unordered_map>
#include <vector>

#include "Support/definition/Schedule.h"
#include "Support/foundation/Paths.h"
#include "programs/check/KeyTable.h"
#include "programs/check/NearestName.h"

namespace vemra::check {
namespace {

constexpr char kSchedule[] = "Schedule";
constexpr char kPathMap[] = "Path2URL";
constexpr std::int64_t kDay = 86400;  // seconds

struct ScheduleRule {
  const char* unit;
  int mask;  // every bit that has a meaning
  const char* bits;
  std::int64_t low;  // of the time
  std::int64_t high;
  const char* time;
};
constexpr ScheduleRule kWeekly = {
    "a weekly schedule",     0x7f, "the days from Monday (1) to Sunday (64)", 0, kDay - 1,
    "seconds since midnight"};
constexpr ScheduleRule kMonthly = {
    "a monthly schedule",
    0xfff,
    "the months from January (1) to December (2048)",
    kDay,
    32 * kDay - 1,
    "the day of the month times 86400 and the seconds since midnight"};

// Whether the value is wrong under any unit, which is reported with its key.
bool IsReported(std::int64_t value, std::int64_t high) {
  return value < 0 || value > high;
}

struct Pair {
  std::string path;
  std::string folded;  // by which the map is sorted
  int line;
};

std::vector<Pair> ReadPairs(const SettingsText& text, FileReport& report) {
  std::vector<Pair> pairs;
  const int count = std::clamp(std::atoi(text.ValueOf(kPathMap, "Count").c_str()), 0, kMaxCount);
  for (int number = 1; number <= count; ++number) {
    const SettingsText::Entry* path = text.Find(kPathMap, "Path" + std::to_string(number));
    if (path == nullptr) continue;
    if (IsAbsolutePath(std::string(path->value)) == 0 && !path->value.empty()) {
      report.Warn(path->line, std::string(path->key) + " is " + Quoted(path->value) +
                                  ": the path of no document begins so, since it is relative");
    }
    pairs.push_back({std::string(path->value), FoldCase(path->value), path->line});
  }
  return pairs;
}

}  // namespace

void CheckFileTypes(const CTavoFileIDX& fileTypes, const SettingsText& text, FileReport& report) {
  const int count = fileTypes.GetNumOfFileTypes();
  if (count == 0) {
    report.Error(text.LineOf("General Definitions", "File Types"),
                 "there is no file type, so nothing is indexed");
  }
  std::unordered_map<std::string, int> known;
  for (int i = 0; i < count; ++i) {
    const std::string& name = fileTypes.GetFileType(i)->GetName();
    const auto [first, isNew] = known.emplace(name, i + 1);
    if (isNew || name.empty()) continue;
    report.Warn(text.LineOf("FileType" + std::to_string(i + 1), "Name"),
                "[FileType" + std::to_string(first->second) + "] is named " + Quoted(name) +
                    " too; the index list refers only to that one");
  }
}

void CheckSchedule(const CTavoFileCFG& configuration, const SettingsText& text,
                   FileReport& report) {
  const SCHEDULE unit = configuration.GetSchedule();
  if (unit != SCHEDULE::kWeekly && unit != SCHEDULE::kMonthly) return;
  const ScheduleRule& rule = unit == SCHEDULE::kWeekly ? kWeekly : kMonthly;
  const int mask = configuration.GetScheduleMask();
  if ((mask & rule.mask) == 0) {
    report.Warn(
        text.LineOf(kSchedule, "Mask"),
        "no update is ever due: Mask of " + std::string(rule.unit) + " is the sum of " + rule.bits);
  } else if ((mask & ~rule.mask) != 0 && !IsReported(mask, kMonthly.mask)) {
    report.Warn(text.LineOf(kSchedule, "Mask"),
                "Mask is " + std::to_string(mask) + ": expected a number from 1 to " +
                    std::to_string(rule.mask) + ", the sum of " + rule.bits);
  }
  const std::int64_t time = configuration.GetScheduleTime().GetTotalSeconds();
  if ((time < rule.low || time > rule.high) && !IsReported(time, kMonthly.high)) {
    report.Warn(text.LineOf(kSchedule, "Time"),
                "Time is " + std::to_string(time) + ": expected a number from " +
                    std::to_string(rule.low) + " to " + std::to_string(rule.high) + ", " +
                    rule.time + " of " + rule.unit);
  }
}

// A look-up tries only the nearest path in the sorting order, so a path that lies inside another
// one hides it from the documents that sort after it.
void CheckPathMap(const SettingsText& text, FileReport& report) {
  std::vector<Pair> pairs = ReadPairs(text, report);
  std::stable_sort(pairs.begin(), pairs.end(),
                   [](const Pair& a, const Pair& b) { return a.folded < b.folded; });
  std::vector<const Pair*> around;  // each inside the one before it
  for (const Pair& pair : pairs) {
    if (pair.path.empty()) continue;
    while (!around.empty() && !pair.folded.starts_with(around.back()->folded)) around.pop_back();
    if (!around.empty()) {
      const Pair& outer = *around.back();
      if (outer.folded == pair.folded) {
        report.Warn(outer.line, "the URL of " + Quoted(outer.path) + " is never used: line " +
                                    std::to_string(pair.line) + " maps the same folder");
        around.pop_back();
      } else {
        report.Warn(pair.line, Quoted(pair.path) + " lies inside " + Quoted(outer.path) +
                                   " of line " + std::to_string(outer.line) +
                                   ": documents there that sort after it get no URL");
      }
    }
    around.push_back(&pair);
  }
}

}  // namespace vemra::check
