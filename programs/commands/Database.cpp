#include "programs/commands/Database.h"

#include <filesystem>

#include "Support/foundation/HostPath.h"
#include "Support/foundation/Paths.h"
#include "Support/text/LangPack.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/Configuration.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/SettingsLine.h"
#include "programs/engine/IndexDatabase.h"

namespace vemra::commands {
namespace {

bool IsFile(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(ToHostPath(path), error);
}

}  // namespace

Database::Database(const std::string& hostPath) : path_(PathFromPerson(hostPath)) {
  configuration_.SetIDX(&list_, /*owner=*/0);
  LoadConfiguration(path_, configuration_);
  LoadPack();
  LoadFields();
}

void Database::LoadPack() {
  const std::string& language = configuration_.GetLanguage();
  TavoLangPack::LoadStatus status;
  pack_ = TavoLangPack::Get(language, &status);
  codePage_ = &CodePage::OfLanguage(language);
  if (pack_ != nullptr) return;
  const std::string reason =
      status.code == TavoLangPack::LoadStatus::kUnknownLanguage
          ? "the language " + language + " is not registered on this computer"
          : "the language pack " + PathForPerson(status.path) + " cannot be read";
  throw CommandError(AtSetting(path_, "General Definitions", "Language", reason));
}

void Database::LoadFields() {
  const std::string& path = configuration_.GetFileINI();
  if (!IsFile(path)) {
    throw CommandError(AtSetting(path_, "File Names", "INIFile",
                                 "the field definitions " + PathForPerson(path) + " are missing"));
  }
  fields_.Load(path.c_str());
  if (fields_.GetNumOfFields() == 0) {
    throw CommandError(PathForPerson(path) + ": defines no field");
  }
}

void Database::LoadIndexList() {
  const std::string& path = configuration_.GetFileIDX();
  if (!IsFile(path) || list_.Load(path) == 0) {
    throw CommandError(AtSetting(path_, "File Names", "IDXFile",
                                 "the index list " + PathForPerson(path) + " cannot be read"));
  }
  if (list_.GetNumOfFileTypes() == 0) {
    throw CommandError(
        AtSetting(path, "File Type List", "File Types", "there is no file type to index"));
  }
  for (int i = 0; i < list_.GetNumOfFileTypes(); ++i) {
    const std::string section = "FileType" + std::to_string(i + 1);
    const std::string& format = list_.GetFileType(i)->GetFormat();
    if (!FormatWrapper::IsFormat(format)) {
      const std::string text = "the format '" + format + "' is not known; there are HTML and Text";
      throw CommandError(AtSetting(path_, section, "Format", text));
    }
    const std::string& definitions = list_.GetFileType(i)->GetFTDfileName();
    if (!definitions.empty() && !IsFile(ConnectPaths(configuration_.GetFolder(), definitions))) {
      throw CommandError(
          AtSetting(path_, section, "FTD", "there is no file " + PathForPerson(definitions)));
    }
  }
}

std::string Database::GetIndexFolder() const {
  const std::string& folder = configuration_.GetIndexFolder();
  return folder.empty() ? configuration_.GetFolder()
                        : ConnectPaths(configuration_.GetFolder(), folder);
}

std::string Database::GetIndexPath() const {
  return engine::IndexPath(GetIndexFolder(), configuration_.GetIndexName());
}

std::unique_ptr<FormatWrapper> Database::MakeFormatWrapper(int fileType) const {
  const CTavoFileType* type = list_.GetFileType(fileType);
  return std::make_unique<FormatWrapper>(path_, fileType,
                                         type == nullptr ? std::string() : type->GetFormat());
}

}  // namespace vemra::commands
