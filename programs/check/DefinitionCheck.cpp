#include "programs/check/DefinitionCheck.h"

#include <algorithm>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "Support/definition/FileCFG.h"
#include "Support/definition/FileIDX.h"
#include "Support/definition/FileINI.h"
#include "Support/foundation/File.h"
#include "Support/foundation/HostPath.h"
#include "Support/foundation/Paths.h"
#include "programs/check/ConfigurationCheck.h"
#include "programs/check/FieldsCheck.h"
#include "programs/check/IndexListCheck.h"
#include "programs/check/TableCheck.h"

namespace vemra::check {
namespace {

constexpr char kFileNames[] = "File Names";
constexpr std::int64_t kMaxFile = std::int64_t{8} << 20;  // bytes; no definition comes near

std::string ReadFile(const std::string& path) {
  TavoFile file(path, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  if (file.GetLength() > kMaxFile) throw std::system_error(EFBIG, std::generic_category());
  std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
  bytes.resize(file.Read(bytes.data(), bytes.size()));
  return bytes;
}

std::string FolderOf(const std::string& path) {
  return path.substr(0, std::min(path.rfind('\\'), path.size()));
}

class DefinitionCheck {
 public:
  explicit DefinitionCheck(const std::string& path) : path_(path) {}

  Report Run() {
    if (!LoadConfiguration()) return std::move(report_);
    CheckConfiguration();
    CheckFieldDefinitions();
    CheckIndexListFile();
    CheckLook();
    return std::move(report_);
  }

 private:
  // The bytes of the file; when it cannot be read, that is reported where the file is named.
  static std::optional<std::string> Read(const std::string& path, const std::string& what,
                                         FileReport& namedBy, int line, Severity severity) {
    const std::string subject = what + ' ' + ShowPath(path);
    if (ReportUnmapped(subject, path, line, namedBy)) return std::nullopt;
    try {
      return ReadFile(path);
    } catch (const std::system_error& error) {
      namedBy.Add(line, severity, subject + " cannot be read: " + error.code().message());
      return std::nullopt;
    }
  }

  // Of a file that the configuration names under the key or, without it, that its name stands for.
  std::optional<std::string> ReadNamed(const std::string& section, const char* key,
                                       const std::string& what, const std::string& path,
                                       Severity severity) {
    const bool isNamed = !text_->ValueOf(section, key).empty();
    const int line =
        isNamed ? text_->LineOf(section, key) : text_->LineOf("General Definitions", "IndexName");
    return Read(path, what, report_.Open(path_), line, severity);
  }

  bool LoadConfiguration() {
    FileReport& report = report_.Open(path_);
    const auto bytes = Read(path_, "the configuration", report, 1, Severity::kError);
    if (!bytes) return false;
    text_.emplace(*bytes);
    configuration_.SetIDX(&fileTypes_, /*owner=*/0);
    const bool loaded = configuration_.Load(path_) != 0;
    CheckAgainstTable(*text_, kConfigurationFile, {FolderOf(path_)}, report);
    return loaded;
  }

  void CheckConfiguration() {
    FileReport& report = report_.Open(path_);
    CheckFileTypes(fileTypes_, *text_, report);
    CheckSchedule(configuration_, *text_, report);
    CheckPathMap(*text_, report);
  }

  void CheckFieldDefinitions() {
    const std::string& path = configuration_.GetFileINI();
    const auto bytes =
        ReadNamed(kFileNames, "INIFile", "the field definitions", path, Severity::kError);
    if (!bytes) return;
    fields_.Load(path.c_str());
    const SettingsFile file(report_.Open(path), *bytes);
    CheckAgainstTable(file.text, kFieldsFile, {FolderOf(path), &fields_.GetDefinedFields()},
                      file.report);
    std::deque<SettingsFile> files;
    std::vector<TagRules> rules;
    for (int i = 0; i < fileTypes_.GetNumOfFileTypes(); ++i) OpenTagRules(i, files, rules);
    CheckFields(fields_, file, rules);
  }

  // File types may share a file.
  void OpenTagRules(int fileType, std::deque<SettingsFile>& files, std::vector<TagRules>& rules) {
    const std::string& name = fileTypes_.GetFileType(fileType)->GetFTDfileName();
    if (name.empty()) return;
    const std::string path = ConnectPaths(configuration_.GetFolder(), name);
    for (const SettingsFile& other : files) {
      if (other.report.GetPath() == path) return;
    }
    const auto bytes = ReadNamed("FileType" + std::to_string(fileType + 1), "FTD", "the tag rules",
                                 path, Severity::kError);
    if (!bytes) return;
    fields_.ReadFTD(fileType, path, /*clearFirst=*/1);
    const SettingsFile& file = files.emplace_back(report_.Open(path), *bytes);
    CheckAgainstTable(file.text, kTagRulesFile, {FolderOf(path)}, file.report);
    rules.push_back({fileType, &file});
  }

  void CheckIndexListFile() {
    const std::string& path = configuration_.GetFileIDX();
    const auto bytes = ReadNamed(kFileNames, "IDXFile", "the index list", path, Severity::kError);
    if (bytes) CheckIndexList(*bytes, configuration_, report_.Open(path));
  }

  // Not every database has a look and feel, so only one that is named must be there.
  void CheckLook() {
    const std::string& path = configuration_.GetFileLCL();
    const bool isNamed = !text_->ValueOf(kFileNames, "LCLFile").empty();
    std::error_code error;
    if (!isNamed && !std::filesystem::exists(ToHostPath(path), error)) return;
    const auto bytes =
        ReadNamed(kFileNames, "LCLFile", "the look and feel", path, Severity::kWarning);
    if (!bytes) return;
    const SettingsText text(*bytes);
    CheckAgainstTable(text, kLookFile, {FolderOf(path)}, report_.Open(path));
  }

  const std::string path_;
  Report report_;
  std::optional<SettingsText> text_;  // of the configuration
  CTavoFileIDX fileTypes_;            // before its user
  CTavoFileCFG configuration_;
  CTavoFileINI fields_;
};

}  // namespace

Report CheckDefinition(const std::string& path) {
  return DefinitionCheck(path).Run();
}

}  // namespace vemra::check
