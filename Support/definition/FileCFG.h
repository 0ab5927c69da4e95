#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"
#include "Support/definition/Path2URL.h"
#include "Support/definition/Schedule.h"
#include "Support/foundation/DateTime.h"

namespace vemra {

class CTavoFileIDX;
class INIWorker;
class TavoLangPack;

// The configuration of a database (".cfg"): its name, language, index folder and schedule, the
// state of its last update, and the names of its other files, from which it derives their full
// paths. Used by one thread at a time.
class SUPPORT_API CTavoFileCFG {
 public:
  CTavoFileCFG();
  explicit CTavoFileCFG(const std::string& path);  // Load(path), whose result is lost
  CTavoFileCFG(const CTavoFileCFG&) = delete;
  CTavoFileCFG& operator=(const CTavoFileCFG&) = delete;
  ~CTavoFileCFG();  // deletes the index list when SetIDX made this object its owner

  // Returns 0 and leaves the object unchanged when the file is not readable; 0 with the fields read
  // so far when "IndexName" is missing or empty. Other missing keys take their defaults.
  int Load(const std::string& path);
  int Load(INIWorker& reader);
  // Raises TavoINIException when a write fails. Returns 1. Never writes "Loadable": saving a
  // definition must not open a database to searchers.
  int Save();
  int SaveAs(const std::string& path);
  int Save(INIWorker& writer);
  // A new definition under the path of SetFileName; writes nothing.
  void Create(const std::string& name, const std::string& folder, int dynamic);
  void Reset();  // empties everything but the index list
  // Sets the configuration's path, and the folder that relative file names are under.
  void SetFileName(const std::string& path);
  // Fills in what is empty and derives the full paths; Load, Save and Create run it.
  void SetDefaults();

  const std::string& GetDatabaseID() const { return path_; }  // the configuration's path
  const std::string& GetFolder() const { return folder_; }    // no trailing backslash
  const std::string& GetIndexName() const { return indexName_; }
  const std::string& GetIndexFolder() const { return indexFolder_; }
  void SetIndexFolder(const std::string& folder) { indexFolder_ = folder; }
  int GetIndexDynamic() const { return indexDynamic_; }

  // Full paths of the database's files.
  const std::string& GetFileINI() const { return iniPath_; }
  const std::string& GetFileIDX() const { return idxPath_; }
  const std::string& GetFileFIN() const { return finPath_; }
  const std::string& GetFileLOG() const { return logPath_; }
  const std::string& GetFileLCL() const { return lclPath_; }
  std::string GetFileSFM() const;
  std::string GetFileSPD() const;
  std::string GetAccessFile() const;
  // Where an update builds the index: the temporary folder's "index" with ReplaceLater, else the
  // index folder.
  std::string GetIndexDestFolder() const;
  const std::string& GetTempFolder() const { return tempFolder_; }
  void SetTempFolder(const std::string& folder) { tempFolder_ = folder; }

  // The pack of the configured language, a loan of the cache; null when there is none.
  TavoLangPack* GetLangPack() const;
  TavoPath2URL& GetPath2URL() { return path2URL_; }
  void PreparePath2URL() { path2URL_.Sort(); }
  std::string GetURL(const std::string& path) { return path2URL_.TranslatePath(path); }

  const std::string& GetLanguage() const { return language_; }
  void SetLanguage(const std::string& language) { language_ = language; }
  SCHEDULE GetSchedule() const { return scheduleUnit_; }
  void SetSchedule(SCHEDULE unit) { scheduleUnit_ = unit; }
  TimeSpan GetScheduleTime() const { return scheduleTime_; }
  void SetScheduleTime(TimeSpan time) { scheduleTime_ = time; }
  std::uint16_t GetScheduleMask() const { return scheduleMask_; }
  void SetScheduleMask(std::uint16_t mask) { scheduleMask_ = mask; }
  DateTime GetLastUpdateTime() const { return lastIndexTime_; }  // of the last successful update
  bool IsLoadable() const { return loadable_; }
  bool IsLastUpdateOK() const { return indexOK_; }
  int IsAutomatic() const { return automatic_; }
  void SetAutomatic(int flag) { automatic_ = flag; }
  int IsReplaceLater() const { return replaceLater_; }
  void SetReplaceLater(int flag) { replaceLater_ = flag; }
  int IsEncrypted() const { return encrypted_; }
  void SetEncrypted(int flag) { encrypted_ = flag; }
  bool IsSpideringEnabled() const { return useSpider_; }
  void EnableSpidering(bool flag) { useSpider_ = flag; }
  bool GetRTLResultView() const { return rtlResultView_; }
  void SetRTLResultView(bool flag) { rtlResultView_ = flag; }
  const std::string& GetToolbarURL() const { return toolbarURL_; }
  void SetToolbarURL(const std::string& url) { toolbarURL_ = url; }
  const std::string& GetToolbarSize() const { return toolbarSize_; }
  void SetToolbarSize(const std::string& size) { toolbarSize_ = size; }

  CTavoFileIDX* GetIDX() const { return idx_; }
  // An earlier list that is owned is deleted, unless it is the same one.
  void SetIDX(CTavoFileIDX* list, int owner);
  void SetOwnerIDX(int owner) { ownsIDX_ = owner; }

  // Point a worker at this file and at the section of file type i (from 0), or at "Options".
  void SetFileTypeSection(int i, INIWorker& worker) const;
  void SetOptionsSection(INIWorker& worker) const;

  // An update begins: the database is no longer loadable. It ends: its result and, when ok, the
  // time are stored at once, and only an ok one makes the database loadable again. Failed writes
  // are not reported.
  void MarkUpdateStarted();
  void MarkUpdateFinished(bool ok);
  void SetLoadable(bool flag);  // stored at once
  static void SetLoadable(const std::string& path, bool flag);
  void WriteIndexStatus(INIWorker& writer) const;

  DateTime GetNextUpdateTime() const;  // 0 without a schedule

  // Moves a definition to another folder by rewriting the folders of the stored file names.
  // Returns 0 at the first write that fails. Kept: "FileType" sections are taken from number 0 on
  // up to the first one without "FTD", which is written too, while they are numbered from 1
  // elsewhere; "SPDFile", "AccessFile" and "TempFolder" stay.
  static int UpdateCFGFile(const std::string& cfgPath, const std::string& newFolder);

 private:
  void LoadFileNames(INIWorker& reader);
  void LoadSchedule(INIWorker& reader);
  void SaveGeneral(INIWorker& writer) const;
  void SaveFileNames(INIWorker& writer) const;
  void SaveSchedule(INIWorker& writer) const;
  std::string DerivePath(const std::string& storedName, const char* extension) const;

  std::string path_;
  std::string folder_;
  std::string indexName_;
  std::string indexFolder_;
  int indexDynamic_ = 0;
  bool rtlResultView_ = false;
  std::string toolbarURL_;
  std::string toolbarSize_;
  TavoPath2URL path2URL_;
  // As stored: possibly empty or relative.
  std::string iniFile_;
  std::string idxFile_;
  std::string finFile_;
  std::string logFile_;
  std::string lclFile_;
  std::string spdFile_;
  std::string accessFile_;
  std::string tempFolder_;
  std::string sfmFile_;
  // Derived by SetDefaults.
  std::string iniPath_;
  std::string idxPath_;
  std::string finPath_;
  std::string logPath_;
  std::string lclPath_;
  std::string language_;
  int automatic_ = 0;
  int replaceLater_ = 0;
  bool useSpider_ = false;
  int encrypted_ = 0;
  bool loadable_ = false;
  bool indexOK_ = true;
  DateTime lastIndexTime_;
  SCHEDULE scheduleUnit_ = SCHEDULE::kNone;
  TimeSpan scheduleTime_;
  std::uint16_t scheduleMask_ = 0;
  CTavoFileIDX* idx_ = nullptr;
  int ownsIDX_ = 0;
};

}  // namespace vemra
