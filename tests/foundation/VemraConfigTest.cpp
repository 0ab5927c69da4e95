#include "Support/foundation/VemraConfig.h"

#include <gtest/gtest.h>

#include <functional>

#include "Support/foundation/Registry.h"
#include "tests/TestRegistry.h"

namespace vemra {
namespace {

class VemraConfigTest : public testing::Test {
 protected:
  test::TestRegistry registry_;
};

TEST_F(VemraConfigTest, MissingSettingsKeepTheirDefaults) {
  const VemraConfig config;
  EXPECT_EQ(config.GetCGIRoot(), "");
  EXPECT_EQ(config.GetDictionaryURL(), "/Dictionary.exe");
  EXPECT_EQ(config.GetWebThemes(), "\\*.*");
  EXPECT_EQ(config.GetMaxExpansions(), 200U);
  EXPECT_EQ(config.GetMaxThreads(), 0U);
  EXPECT_EQ(config.GetSpyLevel(), 0U);
  EXPECT_EQ(config.RunAsService(), 0);
  EXPECT_EQ(config.IsStandalone(), 1);
}

TEST_F(VemraConfigTest, ReadsEverySetting) {
  for (const char* const name :
       {"DBRoot", "TmpRoot", "HTMLRoot", "HTMLDir", "Data", "CGIRoot", "WebThemes", "DefLang"}) {
    ASSERT_EQ(SetTavoValue("Vemra Server", name, std::string("<") + name), 1);
  }
  const std::pair<const char*, std::function<std::uint32_t(const VemraConfig&)>> kNumbers[] = {
      {"DefRTL", &VemraConfig::GetDefaultRTL},
      {"MaxSpiderThreads", &VemraConfig::GetMaxSpiderThreads},
      {"AdminPort", &VemraConfig::GetAdminPort},
      {"QueryPort", &VemraConfig::GetQueryPort},
      {"DefDump", &VemraConfig::GetDump},
      {"Service", &VemraConfig::RunAsService},
      {"SiteSearch", &VemraConfig::IsStandalone},
      {"MaxThreads", &VemraConfig::GetMaxThreads},
      {"MaxExpansions", &VemraConfig::GetMaxExpansions},
      {"MaxWait", &VemraConfig::GetMaxWaitSec},
      {"HttpTimeout", &VemraConfig::GetHttpTimeout}};
  std::uint32_t number = 101;
  for (const auto& [name, get] : kNumbers) {
    ASSERT_EQ(SetTavoValue("Vemra Server", name, number++), 1);
  }
  ASSERT_EQ(SetTavoValue("Vemra Info\\Log", "Level", 9U), 1);

  VemraConfig config;
  EXPECT_EQ(config.GetDatabaseRoot() + config.GetTmpRoot() + config.GetHTMLRoot() +
                config.GetHTMLDir() + config.GetWebThemes() + config.GetDefaultLanguage(),
            "<DBRoot<TmpRoot<HTMLRoot<HTMLDir<WebThemes\\*.*<DefLang");
  EXPECT_EQ(config.GetDBDataDir(), "<Data\\To Database");
  EXPECT_EQ(config.GetHTMLDataDir(), "<Data\\To HTML Root");
  EXPECT_EQ(config.GetFrameURL(), "<CGIRoot/VemraGetFrame.exe");
  number = 101;
  for (const auto& [name, get] : kNumbers) EXPECT_EQ(get(config), number++) << name;
  EXPECT_EQ(config.GetSpyLevel(), 9U);  // only the setter checks it
  for (const auto& [set, stored] : {std::pair{0U, 1U}, {1, 1}, {4, 4}, {5, 1}}) {
    config.SetSpyLevel(set);
    EXPECT_EQ(config.GetSpyLevel(), stored) << set;
  }
  config.SetCGIRoot("/x");
  EXPECT_EQ(config.GetVemraGateURL(), "/x/VemraGate.exe");
}

TEST_F(VemraConfigTest, FindsTheConfigurationFileOfADatabase) {
  const auto host = registry_.Folder().Host();
  std::filesystem::create_directories(host / "db" / "a.cfg");
  std::filesystem::create_directories(host / "empty");
  test::WriteHostFile(host / "db" / "c.cfg", "");
  test::WriteHostFile(host / "db" / "B.CFG", "");
  test::WriteHostFile(host / "db" / "a.cfg.new", "");
  ASSERT_EQ(SetTavoValue("Vemra Server", "DBRoot", registry_.Folder().Path()), 1);
  const VemraConfig config;
  const struct {
    const char* name;
    int result;
    std::string path;
  } kRows[] = {
      {"any\\x.CfG", 1, "any\\x.CfG"},
      {".cfg", 1, ".cfg"},
      {"db", 1, registry_.Folder().Path("db\\B.CFG")},
      {"empty", 0, ""},
      {"missing", 0, ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    std::string path = "old";
    EXPECT_EQ(config.GetCfgNameByDBName(row.name, path), row.result);
    EXPECT_EQ(path, row.path);
  }
}

std::string TracedSettings() {
  const test::TestRegistry registry;
  SetTavoValue("Vemra Info\\Trace", "TraceFilePath", registry.Folder().Path("trace.txt"));
  SetTavoValue("Vemra Info\\Trace", "Module", 128U);
  SetTavoValue("Vemra Info\\Trace", "Level", 2U);
  SetTavoValue("Vemra Server", "DefRTL", 1U);
  const VemraConfig config;
  std::istringstream trace(test::ReadHostFile(registry.Folder().Host() / "trace.txt"));
  std::string settings;
  for (std::string line; std::getline(trace, line);) {
    constexpr std::string_view kBefore = "): Cannot read ";
    const std::size_t message = line.find(kBefore);
    if (line.find(" Support\\VemraConfig(") == std::string::npos || message == std::string::npos)
      continue;
    line.erase(0, message + kBefore.size());
    settings += line.substr(0, line.find(" from registry")) + ",";
  }
  return settings;
}

// In a process of its own, since a process has one tracer.
TEST(VemraConfigDeathTest, TracesMissingSettings) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto traceAndExit = [] {
    std::fputs(TracedSettings().c_str(), stderr);
    std::exit(0);
  };
  EXPECT_EXIT(traceAndExit(), testing::ExitedWithCode(0),
              "default language,default SPIDERING,default AdminPort,default AdminPort,default "
              "DUMP,run-as-service,standalone info,default SpyLevel,");
}

}  // namespace
}  // namespace vemra
