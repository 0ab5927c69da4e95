#include "programs/check/IndexListCheck.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Support/definition/FileIDX.h"
#include "Support/definition/FileIDXitem.h"
#include "Support/foundation/Ascii.h"
#include "Support/foundation/HostPath.h"
#include "Support/foundation/Paths.h"
#include "Support/foundation/Strings.h"
#include "programs/check/KeyTable.h"
#include "programs/check/NearestName.h"
#include "programs/check/Patterns.h"
#include "programs/check/ValueCheck.h"

namespace vemra::check {
namespace {

namespace fs = std::filesystem;

constexpr char kFileTypeList[] = "File Type List";
constexpr char kFilesToIndex[] = "Files to Index";
constexpr char kFileTypes[] = "File Types";
constexpr std::size_t kMaxLine = 255;  // bytes that the profile reader takes as one line

bool IsSpace(char c) {
  return IsAsciiSpace(static_cast<unsigned char>(c));
}

struct Line {
  std::string_view text;
  int number = 0;
};

struct Section {
  std::string_view title;  // empty when its "]" is not at the end
  int line = 0;
  std::vector<Line> lines;
};

// The sections as the profile reader tells them: a title begins its line with "[", exactly.
// What stands before the first title is left out.
std::vector<Section> SplitSections(std::string_view bytes, FileReport& report) {
  std::vector<Section> sections;
  for (int number = 1; !bytes.empty(); ++number) {
    const std::size_t feed = std::min(bytes.find('\n'), bytes.size());
    std::string_view line = bytes.substr(0, feed);
    bytes.remove_prefix(std::min(feed + 1, bytes.size()));
    while (line.ends_with('\r')) line.remove_suffix(1);
    if (line.size() > kMaxLine) {
      report.Error(number, "this line has more than " + std::to_string(kMaxLine) +
                               " bytes; what follows is read as a line of its own");
    }
    line = line.substr(0, line.find('\0'));
    const auto first = std::find_if_not(line.begin(), line.end(), IsSpace);
    if (first == line.end() || *first == ';') continue;
    if (line.starts_with('[')) {
      std::string_view title = line;
      while (IsSpace(title.back())) title.remove_suffix(1);
      title = title.ends_with(']') ? title.substr(1, title.size() - 2) : std::string_view();
      sections.push_back({title, number, {}});
    } else if (!sections.empty()) {
      sections.back().lines.push_back({line, number});
    } else {
      report.Warn(number, "what stands before the first section is not read");
    }
  }
  return sections;
}

// A file type that the list names, in its order.
struct FileType {
  std::string name;
  int line;
};

class IndexListCheck {
 public:
  IndexListCheck(std::vector<Section> sections, CTavoFileCFG& configuration, FileReport& report)
      : sections_(std::move(sections)), configuration_(configuration), report_(report) {
    configuration_.PreparePath2URL();
  }

  void Run() {
    const auto list = Find(kFileTypeList);
    const auto files = Find(kFilesToIndex);
    if (list != sections_.end()) {
      CheckTypeList(*list);
      CheckAgainstConfiguration(list->line);
    }
    for (auto section = sections_.begin(); section != sections_.end(); ++section) {
      if (!report_.TakesErrors()) return;
      if (section == list) continue;
      if (section == files) {
        ReportUnread(*section, section->lines.begin());
      } else if (section < files) {
        ReportUnknown(*section, {kFileTypeList, kFilesToIndex});
      } else {
        CheckFileTypeSection(*section);
      }
    }
    for (const FileType& type : types_) {
      if (filled_.count(type.name) == 0) {
        report_.Warn(type.line, "nothing is indexed as " + Quoted(type.name) +
                                    ": no section of that name below [Files to Index] has an item");
      }
    }
  }

 private:
  using Sections = std::vector<Section>;

  Sections::const_iterator Find(const char* title) {
    const auto found = std::find_if(sections_.begin(), sections_.end(),
                                    [&](const Section& section) { return section.title == title; });
    if (found == sections_.end()) {
      report_.Error(1, "there is no section " + Bracketed(title) +
                           ", in these letters at the start of a line; nothing is indexed");
    }
    return found;
  }

  void CheckTypeList(const Section& section) {
    auto line = section.lines.begin();
    std::optional<int> count;
    for (; line != section.lines.end() && !count; ++line) {
      count = ReadCount(line->text);
      if (!count) {
        report_.Warn(line->number, Quoted(line->text) + " is not read; expected " + kFileTypes +
                                       "= and a number");
      }
    }
    if (!count) {
      return report_.Error(section.line, Bracketed(kFileTypeList) + " has no line " + kFileTypes +
                                             "= with a number; nothing is indexed");
    }
    const int countLine = std::prev(line)->number;
    int read = 0;
    for (; read < *count && line != section.lines.end(); ++line, ++read) ReadFileType(*line);
    if (read < *count) {
      report_.Error(countLine, std::string(kFileTypes) + " is " + std::to_string(*count) +
                                   ", but only " + std::to_string(read) + " lines follow");
    }
    ReportUnread(section, line);
  }

  static std::optional<int> ReadCount(std::string_view line) {
    const std::string key = std::string(kFileTypes) + '=';
    if (!line.starts_with(key)) return std::nullopt;
    line.remove_prefix(key.size());
    while (!line.empty() && IsSpace(line.front())) line.remove_prefix(1);
    while (!line.empty() && IsSpace(line.back())) line.remove_suffix(1);
    int count = 0;
    const auto parsed = std::from_chars(line.data(), line.data() + line.size(), count);
    if (parsed.ec != std::errc() || parsed.ptr != line.data() + line.size()) return std::nullopt;
    return count;
  }

  void ReadFileType(const Line& line) {
    const std::string text(line.text);
    const char* cursor = text.c_str();
    std::string name = ReadFileName(cursor);
    if (name.empty()) {
      return report_.Error(line.number,
                           "a file type has no name, which ends the list; expected NAME,PATTERNS");
    }
    CheckFilters(cursor, line.number);
    if (typeNames_.insert(name).second) {
      types_.push_back({std::move(name), line.number});
    } else {
      report_.Warn(line.number, "the file type " + Quoted(name) +
                                    " is repeated; these patterns take the place of the first");
    }
  }

  // Each names the file types of the other: listLine is where the list of this one begins.
  void CheckAgainstConfiguration(int listLine) {
    const CTavoFileIDX& fileTypes = *configuration_.GetIDX();
    std::unordered_set<std::string> known;
    std::vector<std::string> names;
    for (int i = 0; i < fileTypes.GetNumOfFileTypes(); ++i) {
      const std::string& name = fileTypes.GetFileType(i)->GetName();
      if (name.empty() || !known.insert(name).second) continue;
      if (names.size() < kMaxNames) names.push_back(name);
      if (typeNames_.count(name) != 0) continue;
      report_.Warn(listLine, "the file type " + Quoted(name) + " of " + ConfigurationPath() +
                                 " is not in the list, so nothing is indexed as it");
    }
    for (const FileType& type : types_) {
      if (!report_.TakesErrors()) return;
      if (known.count(type.name) != 0) continue;
      const std::string nearest = NearestName(type.name, names);
      report_.Error(type.line, "no [FileType] section of " + ConfigurationPath() +
                                   " has the name " + Quoted(type.name) +
                                   (nearest.empty() ? "" : "; the nearest is " + Quoted(nearest)));
    }
  }

  std::string ConfigurationPath() const { return ShowPath(configuration_.GetDatabaseID()); }

  void ReportUnread(const Section& section, std::vector<Line>::const_iterator line) {
    if (line == section.lines.end()) return;
    report_.Warn(line->number, Quoted(line->text) + " is not read here, nor what follows it in " +
                                   Bracketed(section.title));
  }

  void ReportUnknown(const Section& section, const std::vector<std::string>& names) {
    if (!report_.TakesWarnings()) return;
    const std::string_view title = section.title;
    std::string text = title.empty() ? "a section whose ] is not at the end of its line"
                                     : "the section " + Bracketed(title);
    text += " is not read";
    if (typeNames_.count(std::string(title)) != 0) {
      text += "; the items of a file type stand below [Files to Index]";
    } else if (!names.empty()) {
      text += "; the nearest known one is [" + NearestName(title, names) + ']';
    }
    report_.Warn(section.line, std::move(text));
  }

  void CheckFileTypeSection(const Section& section) {
    const std::string name(section.title);
    if (typeNames_.count(name) == 0) {
      std::vector<std::string> names;
      for (std::size_t i = 0; i < types_.size() && i < kMaxNames; ++i) {
        names.push_back(types_[i].name);
      }
      return ReportUnknown(section, names);
    }
    const auto [first, isNew] = firstLines_.emplace(name, section.line);
    if (!isNew) {
      return report_.Warn(section.line, "the section " + Bracketed(name) +
                                            " is repeated and not read; the one in line " +
                                            std::to_string(first->second) + " counts");
    }
    for (const Line& line : section.lines) {
      if (!report_.TakesErrors()) return;
      if (CheckItem(line)) filled_.insert(name);
    }
  }

  // Whether the line is an item.
  bool CheckItem(const Line& line) {
    CTavoFileIDXitem item;
    if (item.Read(std::string(line.text)) == 0) {
      report_.Error(line.number, Quoted(line.text) +
                                     " is no item and is skipped; expected D,FOLDER or "
                                     "D,FOLDER,S,PATTERNS or F,FILE");
      return false;
    }
    CheckPlace(item, line.number);
    if (item.IsFolder() != 0) CheckFilters(item.GetFilters(), line.number);
    return true;
  }

  void CheckPlace(const CTavoFileIDXitem& item, int line) {
    const std::string& path = item.GetName();
    const bool isFolder = item.IsFolder() != 0;
    const std::string subject = (isFolder ? "the folder " : "the file ") + Quoted(path);
    if (ReportUnmapped(subject, path, line, report_)) return;
    if (IsAbsolutePath(path) == 0) {
      report_.Warn(line, Quoted(path) +
                             " is relative: it is looked for in the folder that a program is "
                             "started in");
    }
    if (!report_.TakesWarnings()) return;  // looking at the disk takes long
    std::error_code error;
    const std::string hostPath = ToHostPath(path);
    if (isFolder ? !fs::is_directory(hostPath, error) : !fs::is_regular_file(hostPath, error)) {
      report_.Warn(line, std::string("there is no ") + (isFolder ? "folder " : "file ") + hostPath);
    }
    CheckUrl(path, isFolder, line);
  }

  void CheckUrl(const std::string& path, bool isFolder, int line) {
    if (configuration_.GetPath2URL().GetCount() == 0) return;
    std::string document = path;
    if (isFolder) {
      RemoveLastSlash(document);
      document += '\\';
    }
    if (configuration_.GetURL(document) != document) return;
    report_.Warn(line, "documents of " + ShowPath(path) +
                           " have no URL: no path of [Path2URL] begins theirs");
  }

  void CheckFilters(std::string_view filters, int line) {
    for (const std::string_view pattern : SplitFilters(filters)) {
      if (!report_.TakesErrors()) return;
      const std::string fault = FilterFault(pattern);
      if (fault.empty()) continue;
      report_.Warn(line, "the pattern " + Quoted(pattern) + " can never match: " + fault);
    }
  }

  static constexpr std::size_t kMaxNames = 200;  // among which the nearest is looked for

  Sections sections_;
  CTavoFileCFG& configuration_;
  FileReport& report_;
  std::vector<FileType> types_;
  std::unordered_set<std::string> typeNames_;
  std::unordered_map<std::string, int> firstLines_;  // of the sections that were met
  std::unordered_set<std::string> filled_;           // file types with an item
};

}  // namespace

void CheckIndexList(std::string_view bytes, CTavoFileCFG& configuration, FileReport& report) {
  IndexListCheck(SplitSections(bytes, report), configuration, report).Run();
}

}  // namespace vemra::check
