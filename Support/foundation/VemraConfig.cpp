#include "Support/foundation/VemraConfig.h"

#include "Support/foundation/Registry.h"
#include "Support/platform/FolderListing.h"
#include "Support/platform/Paths.h"
#include "Support/platform/SystemFamily.h"
#include "Support/services/Trace.h"

namespace vemra {

namespace {

constexpr char kServer[] = "Vemra Server";
constexpr std::size_t kMaxString = 260;  // characters
constexpr std::uint32_t kTraceLevel = 2;
constexpr char kConfigExtension[] = ".cfg";

void TraceMissing(int line, const char* message) {
  TavoTrace::GetTracer().Trace("Support\\VemraConfig", line, kTraceServer, kTraceLevel, message);
}

bool IsConfigName(const std::string& name) {
  const std::size_t length = sizeof kConfigExtension - 1;
  return name.size() >= length &&
         platform::IsSameName(name.substr(name.size() - length), kConfigExtension);
}

}  // namespace

// Both leave the target, which holds the default, as it is when the store has no such value.
int VemraConfig::ReadText(const char* name, std::string& text) {
  const int read = GetTavoValue(kServer, name, text, kMaxString);
  settings_.push_back({kServer, name, text, read != 0});
  return read;
}

template <class Number>
int VemraConfig::ReadNumber(const char* key, const char* name, Number& target) {
  auto number = static_cast<std::uint32_t>(target);
  const int read = GetTavoValue(key, name, number);
  target = static_cast<decltype(target + 0)>(number);
  settings_.push_back({key, name, std::to_string(number), read != 0});
  return read;
}

VemraConfig::VemraConfig() {
  ReadText("DBRoot", databaseRoot_);
  ReadText("TmpRoot", tmpRoot_);
  ReadText("HTMLRoot", htmlRoot_);
  ReadText("HTMLDir", htmlDir_);
  ReadText("Data", dataDir_);
  ReadText("WebThemes", webThemes_);
  ReadText("CGIRoot", cgiRoot_);
  if (ReadText("DefLang", defaultLanguage_) == 0)
    TraceMissing(__LINE__, "Cannot read default language from registry\n");
  if (ReadNumber(kServer, "DefRTL", defaultRTL_) == 0)
    TraceMissing(__LINE__, "Cannot read default RTL from registry\n");
  if (ReadNumber(kServer, "MaxSpiderThreads", maxSpiderThreads_) == 0)
    TraceMissing(__LINE__, "Cannot read default SPIDERING from registry\n");
  if (ReadNumber(kServer, "AdminPort", adminPort_) == 0)
    TraceMissing(__LINE__, "Cannot read default AdminPort from registry\n");
  // The admin port's message: kept, administrators look for it.
  if (ReadNumber(kServer, "QueryPort", queryPort_) == 0)
    TraceMissing(__LINE__, "Cannot read default AdminPort from registry\n");
  if (ReadNumber(kServer, "DefDump", dump_) == 0)
    TraceMissing(__LINE__, "Cannot read default DUMP from registry\n");
  if (ReadNumber(kServer, "Service", runAsService_) == 0)
    TraceMissing(__LINE__, "Cannot read run-as-service from registry\n");
  if (ReadNumber(kServer, "SiteSearch", standalone_) == 0)
    TraceMissing(__LINE__, "Cannot read standalone info from registry\n");
  ReadNumber(kServer, "MaxThreads", maxThreads_);
  ReadNumber(kServer, "MaxExpansions", maxExpansions_);
  ReadNumber(kServer, "MaxWait", maxWaitSec_);
  ReadNumber(kServer, "HttpTimeout", httpTimeout_);
  if (ReadNumber("Vemra Info\\Log", "Level", spyLevel_) == 0)
    TraceMissing(__LINE__, "Cannot read default SpyLevel from registry\n");
  SetCGIPaths();
  runOnNT_ = platform::IsNTFamily() ? 1 : 0;
}

VemraConfig& VemraConfig::GetVemraConfig() {
  static Singleton holder;
  return *holder.GetTheObject();
}

VemraConfig* VemraConfig::Singleton::GetTheObject() {
  std::call_once(created_, [this] { object_ = std::make_unique<VemraConfig>(); });
  return object_.get();
}

void VemraConfig::SetCGIRoot(const std::string& root) {
  cgiRoot_ = root;
  SetCGIPaths();
}

void VemraConfig::SetCGIPaths() {
  dictionaryURL_ = cgiRoot_ + "/Dictionary.exe";
  frameURL_ = cgiRoot_ + "/VemraGetFrame.exe";
  gateURL_ = cgiRoot_ + "/VemraGate.exe";
}

int VemraConfig::GetCfgNameByDBName(const std::string& databaseName, std::string& cfgPath) const {
  if (IsConfigName(databaseName)) {
    cfgPath = databaseName;
    return 1;
  }
  const std::string folder = databaseRoot_ + "\\" + databaseName;
  std::string first;
  platform::FolderListing listing;
  if (listing.Open(folder)) {
    platform::FolderEntry entry;
    while (listing.Next(&entry)) {
      const bool earlier = first.empty() || entry.name < first;
      if (!entry.isFolder && IsConfigName(entry.name) && earlier) first = entry.name;
    }
  }
  cfgPath = first.empty() ? "" : folder + "\\" + first;
  return first.empty() ? 0 : 1;
}

}  // namespace vemra
