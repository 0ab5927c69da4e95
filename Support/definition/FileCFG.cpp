#include "Support/definition/FileCFG.h"

#include <system_error>

#include "Support/definition/FileIDX.h"
#include "Support/definition/StoredText.h"
#include "Support/foundation/File.h"
#include "Support/foundation/INIWorker.h"
#include "Support/foundation/Paths.h"
#include "Support/platform/PrivateProfile.h"
#include "Support/platform/Process.h"
#include "Support/text/LangPack.h"

namespace vemra {
namespace {

constexpr char kGeneral[] = "General Definitions";
constexpr char kFileNames[] = "File Names";
constexpr char kSchedule[] = "Schedule";

bool CanRead(const std::string& path) {
  try {
    const TavoFile file(path, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

bool ReadFlag(INIWorker& reader, const char* key, bool fallback) {
  int flag = 0;
  reader.GetBoolean(key, flag, fallback ? 1 : 0);
  return flag != 0;
}

// The file name with its extension, wherever the path had it, in another folder.
std::string MoveToFolder(const std::string& path, const std::string& folder) {
  const std::size_t end = path.find_last_of("\\/:");
  return folder + '\\' + (end == std::string::npos ? path : path.substr(end + 1));
}

}  // namespace

CTavoFileCFG::CTavoFileCFG() {
  Reset();
}

CTavoFileCFG::CTavoFileCFG(const std::string& path) : CTavoFileCFG() {
  Load(path);
}

CTavoFileCFG::~CTavoFileCFG() {
  if (ownsIDX_ != 0) delete idx_;
}

void CTavoFileCFG::SetIDX(CTavoFileIDX* list, int owner) {
  if (ownsIDX_ != 0 && list != idx_) delete idx_;
  idx_ = list;
  ownsIDX_ = owner;
}

void CTavoFileCFG::Reset() {
  for (std::string* text :
       {&path_,       &folder_,     &indexName_, &indexFolder_, &toolbarURL_, &toolbarSize_,
        &iniFile_,    &idxFile_,    &finFile_,   &logFile_,     &lclFile_,    &spdFile_,
        &accessFile_, &tempFolder_, &sfmFile_,   &iniPath_,     &idxPath_,    &finPath_,
        &logPath_,    &lclPath_,    &language_}) {
    text->clear();
  }
  for (int* number : {&indexDynamic_, &automatic_, &replaceLater_, &encrypted_}) *number = 0;
  for (bool* flag : {&rtlResultView_, &useSpider_, &loadable_}) *flag = false;
  indexOK_ = true;
  path2URL_.RemoveAll();
  lastIndexTime_ = DateTime();
  scheduleUnit_ = SCHEDULE::kNone;
  scheduleTime_ = TimeSpan();
  scheduleMask_ = 0;
}

int CTavoFileCFG::Load(const std::string& path) {
  if (!CanRead(path)) return 0;
  INIWorker reader(path);
  Reset();
  SetFileName(reader.GetPath());  // path may have been this object's own, which is gone
  return Load(reader);
}

int CTavoFileCFG::Load(INIWorker& reader) {
  const INIWorker::Batch snapshot(reader);  // reads the file once for all its keys
  reader.SetSection(kGeneral);
  if (reader.GetString("IndexName", indexName_) == 0) return 0;
  reader.GetStringWithDefault("IndexFolder", indexFolder_, "");
  reader.GetNum("IndexDynamic", indexDynamic_, 0);
  reader.GetStringWithDefault("Language", language_, "");
  rtlResultView_ = ReadFlag(reader, "RTLResultView", false);
  reader.GetStringWithDefault("ToolbarURL", toolbarURL_, "");
  reader.GetStringWithDefault("ToolbarSize", toolbarSize_, "80");
  useSpider_ = ReadFlag(reader, "UseSpider", false);
  loadable_ = ReadFlag(reader, "Loadable", false);
  if (idx_ != nullptr) idx_->LoadFileTypes(reader);
  LoadFileNames(reader);
  LoadSchedule(reader);
  path2URL_.Load(reader);
  SetDefaults();
  return 1;
}

void CTavoFileCFG::LoadFileNames(INIWorker& reader) {
  reader.SetSection(kFileNames);
  reader.GetStringWithDefault("INIFile", iniFile_, "");
  reader.GetStringWithDefault("IDXFile", idxFile_, "");
  reader.GetStringWithDefault("FINFile", finFile_, "");
  reader.GetStringWithDefault("LOGFile", logFile_, "");
  reader.GetStringWithDefault("SFMFile", sfmFile_, "");
  reader.GetStringWithDefault("LCLFile", lclFile_, "");
  reader.GetStringWithDefault("SPDFile", spdFile_, "");
  reader.GetStringWithDefault("AccessFile", accessFile_, "");
  reader.GetStringWithDefault("TempFolder", tempFolder_, "");
}

void CTavoFileCFG::LoadSchedule(INIWorker& reader) {
  reader.SetSection(kSchedule);
  int number = 0;
  reader.GetNum("Unit", number, 0);
  scheduleUnit_ = static_cast<SCHEDULE>(number);
  reader.GetNum("Mask", number, 0);
  scheduleMask_ = static_cast<std::uint16_t>(number);
  reader.GetTimeSpan("Time", scheduleTime_, TimeSpan());
  reader.GetTime("Last Index Time", lastIndexTime_, DateTime());
  indexOK_ = ReadFlag(reader, "Index OK", true);
  reader.GetNum("Automatic", automatic_, 0);
  reader.GetNum("ReplaceLater", replaceLater_, 0);
  reader.GetNum("Encrypted", encrypted_, 0);
}

int CTavoFileCFG::Save() {
  INIWorker writer(path_, 1);
  return Save(writer);
}

int CTavoFileCFG::SaveAs(const std::string& path) {
  SetFileName(path);
  return Save();
}

int CTavoFileCFG::Save(INIWorker& writer) {
  SetDefaults();
  INIWorker::Batch batch(writer);
  SaveGeneral(writer);
  if (idx_ != nullptr) idx_->SaveFileTypes(writer);
  SaveFileNames(writer);
  SaveSchedule(writer);
  WriteIndexStatus(writer);
  path2URL_.Save(writer);
  batch.Commit();
  return 1;
}

void CTavoFileCFG::SaveGeneral(INIWorker& writer) const {
  writer.SetSection(kGeneral);
  PutText(writer, "IndexName", indexName_);
  PutText(writer, "IndexFolder", indexFolder_);
  writer.PutNum("IndexDynamic", indexDynamic_);
  PutText(writer, "Language", language_);
  writer.PutBoolean("RTLResultView", rtlResultView_ ? 1 : 0);
  PutText(writer, "ToolbarURL", toolbarURL_);
  PutText(writer, "ToolbarSize", toolbarSize_);
  writer.PutBoolean("UseSpider", useSpider_ ? 1 : 0);
}

void CTavoFileCFG::SaveFileNames(INIWorker& writer) const {
  writer.SetSection(kFileNames);
  PutText(writer, "INIFile", iniFile_);
  PutText(writer, "IDXFile", idxFile_);
  PutText(writer, "FINFile", finFile_);
  PutText(writer, "LOGFile", logFile_);
  PutText(writer, "SFMFile", sfmFile_);
  PutText(writer, "LCLFile", lclFile_);
  PutText(writer, "SPDFile", spdFile_);
  PutText(writer, "AccessFile", accessFile_);
  PutText(writer, "TempFolder", tempFolder_);
}

void CTavoFileCFG::SaveSchedule(INIWorker& writer) const {
  writer.SetSection(kSchedule);
  writer.PutNum("Unit", static_cast<int>(scheduleUnit_));
  writer.PutNum("Mask", scheduleMask_);
  writer.PutTimeSpan("Time", scheduleTime_);
  writer.PutNum("Automatic", automatic_);
  writer.PutNum("ReplaceLater", replaceLater_);
  writer.PutNum("Encrypted", encrypted_);
}

void CTavoFileCFG::WriteIndexStatus(INIWorker& writer) const {
  writer.SetSection(kSchedule);
  writer.PutBoolean("Index OK", indexOK_ ? 1 : 0);
  writer.PutTime("Last Index Time", lastIndexTime_);
}

void CTavoFileCFG::Create(const std::string& name, const std::string& folder, int dynamic) {
  indexName_ = name;
  indexFolder_ = folder;
  indexDynamic_ = dynamic;
  loadable_ = false;
  SetDefaults();
}

void CTavoFileCFG::SetFileName(const std::string& path) {
  path_ = path;
  const std::size_t slash = path.rfind('\\');
  folder_ = slash == std::string::npos ? platform::GetCurrentFolder() : path.substr(0, slash);
}

void CTavoFileCFG::SetDefaults() {
  RemoveLastSlash(indexFolder_);
  RemoveLastSlash(folder_);
  if (accessFile_.empty()) accessFile_ = indexName_ + ".acc";
  iniPath_ = DerivePath(iniFile_, ".ini");
  idxPath_ = DerivePath(idxFile_, ".idx");
  finPath_ = DerivePath(finFile_, ".fin");
  logPath_ = DerivePath(logFile_, ".log");
  lclPath_ = DerivePath(lclFile_, ".lcl");
  if (tempFolder_.empty()) tempFolder_ = platform::GetTempFolder();
  RemoveLastSlash(tempFolder_);
}

std::string CTavoFileCFG::DerivePath(const std::string& storedName, const char* extension) const {
  return ConnectPaths(folder_, storedName.empty() ? indexName_ + extension : storedName);
}

std::string CTavoFileCFG::GetFileSFM() const {
  return DerivePath(sfmFile_, ".sfm");
}
std::string CTavoFileCFG::GetFileSPD() const {
  return DerivePath(spdFile_, ".spd");
}
std::string CTavoFileCFG::GetAccessFile() const {
  return ConnectPaths(folder_, accessFile_);
}

std::string CTavoFileCFG::GetIndexDestFolder() const {
  return replaceLater_ != 0 ? tempFolder_ + "\\index" : indexFolder_;
}

TavoLangPack* CTavoFileCFG::GetLangPack() const {
  return TavoLangPack::Get(language_);
}

void CTavoFileCFG::SetFileTypeSection(int i, INIWorker& worker) const {
  worker.SetPath(path_);
  worker.SetSection("FileType" + std::to_string(i + 1));
}

void CTavoFileCFG::SetOptionsSection(INIWorker& worker) const {
  worker.SetPath(path_);
  worker.SetSection("Options");
}

void CTavoFileCFG::MarkUpdateStarted() {
  SetLoadable(false);
}

void CTavoFileCFG::MarkUpdateFinished(bool ok) {
  if (ok) lastIndexTime_ = DateTime::Now();
  indexOK_ = ok;
  INIWorker writer(path_);
  WriteIndexStatus(writer);
  if (ok) SetLoadable(true);
}

void CTavoFileCFG::SetLoadable(bool flag) {
  loadable_ = flag;
  SetLoadable(path_, flag);
}

void CTavoFileCFG::SetLoadable(const std::string& path, bool flag) {
  INIWorker writer(path);
  writer.PutBoolean(kGeneral, "Loadable", flag ? 1 : 0);
}

DateTime CTavoFileCFG::GetNextUpdateTime() const {
  DateTime next;
  vemra::GetNextUpdateTime(scheduleUnit_, scheduleMask_, scheduleTime_, next);
  return next;
}

int CTavoFileCFG::UpdateCFGFile(const std::string& cfgPath, const std::string& newFolder) {
  constexpr std::size_t kValueLimit = 260;
  if (!platform::WriteProfile(kGeneral, "IndexFolder", newFolder.c_str(), cfgPath)) return 0;
  const auto move = [&](const std::string& section, const char* key, std::string& value) {
    value = platform::ReadProfileString(section, key, "", kValueLimit, cfgPath);
    const std::string moved = MoveToFolder(value, newFolder);
    return platform::WriteProfile(section.c_str(), key, moved.c_str(), cfgPath);
  };
  std::string value;
  for (const char* key : {"INIFile", "IDXFile", "FINFile", "LOGFile", "SFMFile", "LCLFile"}) {
    if (!move(kFileNames, key, value)) return 0;
  }
  for (int i = 0;; ++i) {
    if (!move("FileType" + std::to_string(i), "FTD", value)) return 0;
    if (value.empty()) return 1;
  }
}

}  // namespace vemra
