#include "programs/commands/DatabaseStatus.h"

#include <chrono>
#include <filesystem>

#include "Support/definition/FileCFG.h"
#include "Support/definition/FileIDX.h"
#include "Support/foundation/HostPath.h"
#include "Support/foundation/Paths.h"
#include "Support/text/LangPack.h"
#include "programs/commands/Configuration.h"
#include "programs/commands/HostPaths.h"
#include "programs/engine/EngineError.h"
#include "programs/engine/IndexDatabase.h"

namespace vemra::commands {
namespace {

namespace fs = std::filesystem;

FileStatus ReadFile(const std::string& what, const std::string& path) {
  FileStatus file{what, PathForPerson(path), {}, {}};
  std::error_code error;
  const std::uintmax_t bytes = fs::file_size(file.path, error);
  if (error) return file;
  const auto changed = fs::last_write_time(file.path, error);
  if (error) return file;
  file.bytes = bytes;
  file.changed = DateTime(std::chrono::floor<std::chrono::seconds>(
                              std::chrono::file_clock::to_sys(changed).time_since_epoch())
                              .count());
  return file;
}

std::string IndexPathOf(const CTavoFileCFG& configuration) {
  const std::string folder =
      ConnectPaths(configuration.GetFolder(), configuration.GetIndexFolder());
  return engine::IndexPath(folder.empty() ? configuration.GetFolder() : folder,
                           configuration.GetIndexName());
}

void ReadPack(DatabaseStatus& status) {
  TavoLangPack::LoadStatus load;
  const bool found = TavoLangPack::Get(status.language, &load) != nullptr;
  if (!load.path.empty()) status.pack = PathForPerson(load.path);
  if (found) return;
  status.packFault = load.code == TavoLangPack::LoadStatus::kUnknownLanguage
                         ? "not registered on this computer"
                         : "cannot be read";
}

void CountTexts(const std::string& indexPath, DatabaseStatus& status) try {
  status.texts = engine::IndexDatabase(indexPath).CountTexts();
} catch (const engine::EngineError& error) {
  status.indexFault = error.what();
}

void ReadFiles(const CTavoFileCFG& configuration, const CTavoFileIDX& fileTypes,
               DatabaseStatus& status) {
  const auto add = [&](const std::string& what, const std::string& path) {
    status.files.push_back(ReadFile(what, path));
  };
  add("index", IndexPathOf(configuration));
  add("configuration", configuration.GetDatabaseID());
  add("field definitions", configuration.GetFileINI());
  for (int i = 0; i < fileTypes.GetNumOfFileTypes(); ++i) {
    const CTavoFileType& fileType = *fileTypes.GetFileType(i);
    if (fileType.GetFTDfileName().empty()) continue;
    add("tag rules of " + fileType.GetName(),
        ConnectPaths(configuration.GetFolder(), fileType.GetFTDfileName()));
  }
  add("index list", configuration.GetFileIDX());
  add("file dictionary", configuration.GetFileFIN());
  add("look and feel", configuration.GetFileLCL());
  add("log", configuration.GetFileLOG());
  add("access file", configuration.GetAccessFile());
}

}  // namespace

DatabaseStatus ReadDatabaseStatus(const std::string& definition) {
  CTavoFileIDX fileTypes;
  CTavoFileCFG configuration;
  configuration.SetIDX(&fileTypes, /*owner=*/0);
  LoadConfiguration(PathFromPerson(definition), configuration);
  DatabaseStatus status;
  status.name = configuration.GetIndexName();
  status.language = configuration.GetLanguage();
  ReadPack(status);
  status.loadable = configuration.IsLoadable();
  status.lastUpdate = configuration.GetLastUpdateTime();
  status.lastUpdateOk = configuration.IsLastUpdateOK();
  status.nextUpdate = configuration.GetNextUpdateTime();
  ReadFiles(configuration, fileTypes, status);
  if (status.files.front().Exists()) CountTexts(IndexPathOf(configuration), status);
  return status;
}

}  // namespace vemra::commands
