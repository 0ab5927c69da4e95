#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Support/Export.h"

namespace vemra {

// One setting as it was found when the configuration was read.
struct ConfigSetting {
  std::string key;    // below the root of the store
  std::string name;   // of the value in that key
  std::string value;  // a number in decimal
  bool isStored;      // false: the store has no such value of the right type, this is the default
};

// The server's configuration, read once per process from the key "Vemra Server" of the registry
// store (the spy level from "Vemra Info\Log"). A setting that cannot be read keeps its default, and
// the important ones are then traced; construction never fails.
//
// Numbers may be read and set from any thread. The strings do not change after construction, except
// by SetCGIRoot, which is for start-up.
class SUPPORT_API VemraConfig {
 public:
  // Reads the store. Programs use GetVemraConfig; tests construct their own.
  VemraConfig();
  VemraConfig(const VemraConfig&) = delete;
  VemraConfig& operator=(const VemraConfig&) = delete;

  // The process's configuration, created on first use and destroyed at process end.
  static VemraConfig& GetVemraConfig();

  // Holds the one object of a process.
  class SUPPORT_API Singleton {
   public:
    // Creates the object at the first call. Any thread may call. The holder owns the object.
    VemraConfig* GetTheObject();

   private:
    std::once_flag created_;
    std::unique_ptr<VemraConfig> object_;
  };

  // Folders in the Windows path form, without a trailing backslash where the store has none.
  const std::string& GetDatabaseRoot() const { return databaseRoot_; }
  const std::string& GetTmpRoot() const { return tmpRoot_; }
  const std::string& GetHTMLRoot() const { return htmlRoot_; }
  const std::string& GetHTMLDir() const { return htmlDir_; }
  const std::string& GetDataDir() const { return dataDir_; }
  // A search pattern for the theme files.
  std::string GetWebThemes() const { return webThemes_ + "\\*.*"; }
  std::string GetDBDataDir() const { return dataDir_ + "\\To Database"; }
  std::string GetHTMLDataDir() const { return dataDir_ + "\\To HTML Root"; }
  const std::string& GetDefaultLanguage() const { return defaultLanguage_; }

  const std::string& GetCGIRoot() const { return cgiRoot_; }
  const std::string& GetDictionaryURL() const { return dictionaryURL_; }
  const std::string& GetFrameURL() const { return frameURL_; }
  const std::string& GetVemraGateURL() const { return gateURL_; }
  // Stores the root and derives the three URLs again.
  void SetCGIRoot(const std::string& root);

  std::uint32_t GetDefaultRTL() const { return defaultRTL_; }
  std::uint32_t GetAdminPort() const { return adminPort_; }
  std::uint32_t GetQueryPort() const { return queryPort_; }
  // Hours between two dumps of the statistics.
  std::uint32_t GetDump() const { return dump_; }
  // The lowest level that is logged, as stored; 0 when not set.
  std::uint32_t GetSpyLevel() const { return spyLevel_; }
  std::uint32_t GetMaxThreads() const { return maxThreads_; }
  std::uint32_t GetMaxSpiderThreads() const { return maxSpiderThreads_; }
  std::uint32_t GetMaxExpansions() const { return maxExpansions_; }
  std::uint32_t GetMaxWaitSec() const { return maxWaitSec_; }
  std::uint32_t GetHttpTimeout() const { return httpTimeout_; }
  int RunAsService() const { return runAsService_; }
  int IsStandalone() const { return standalone_; }
  // 1 on Windows of the NT family, 0 elsewhere.
  int IsRunOnNT() const { return runOnNT_; }

  // In memory only; nothing is written to the store.
  void SetQueryPort(std::uint32_t port) { queryPort_ = port; }
  void SetDump(std::uint32_t hours) { dump_ = hours; }
  void SetMaxThreads(std::uint32_t count) { maxThreads_ = count; }
  void SetMaxSpiderThreads(std::uint32_t count) { maxSpiderThreads_ = count; }
  // Any value but 1 to 4 stores 1.
  void SetSpyLevel(std::uint32_t level) { spyLevel_ = level >= 1 && level <= 4 ? level : 1; }

  // Every setting in the order in which they are read; what setters change later does not show.
  const std::vector<ConfigSetting>& GetSettings() const { return settings_; }

  // The configuration file of a database: the name itself when it ends in ".cfg", in any case of
  // letters; else the first file, by name, that matches "*.cfg" in the database's folder below the
  // database root. 0 with an empty result when there is none.
  int GetCfgNameByDBName(const std::string& databaseName, std::string& cfgPath) const;

 private:
  int ReadText(const char* name, std::string& text);
  template <class Number>
  int ReadNumber(const char* key, const char* name, Number& target);
  void SetCGIPaths();

  std::string databaseRoot_;
  std::string tmpRoot_;
  std::string htmlRoot_;
  std::string cgiRoot_;
  std::string htmlDir_;
  std::string dataDir_;
  std::string webThemes_;
  std::string defaultLanguage_;
  std::string dictionaryURL_;
  std::string frameURL_;
  std::string gateURL_;
  std::uint32_t defaultRTL_ = 0;
  std::uint32_t adminPort_ = 0;
  std::atomic<std::uint32_t> queryPort_ = 0;
  std::atomic<std::uint32_t> dump_ = 0;
  std::atomic<std::uint32_t> spyLevel_ = 0;
  std::atomic<std::uint32_t> maxThreads_ = 0;
  std::atomic<std::uint32_t> maxSpiderThreads_ = 0;
  std::uint32_t maxExpansions_ = 200;
  std::uint32_t maxWaitSec_ = 0;
  std::uint32_t httpTimeout_ = 0;
  int runAsService_ = 0;
  int standalone_ = 1;
  int runOnNT_ = 0;
  std::vector<ConfigSetting> settings_;
};

}  // namespace vemra
