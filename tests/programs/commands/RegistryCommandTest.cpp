#include <gtest/gtest.h>

#include "tests/programs/commands/RunVemra.h"

namespace vemra::commands {
namespace {

class RegistryCommandTest : public VemraTest {
 protected:
  void TearDown() override { Registry({"delete", "Test", "--all"}); }

  static Outcome Registry(const Arguments& arguments) { return RunVemra({"registry"}, arguments); }
};

TEST_F(RegistryCommandTest, StoresAndShowsEveryType) {
  const struct {
    Arguments value;  // and options
    int exitCode;
    std::string shown;
  } kRows[] = {
      {{"a b"}, kDone, "a b"},
      {{""}, kDone, ""},
      {{"4294967295", "--type", "number"}, kDone, "4294967295"},
      {{"0xFf", "--type", "number"}, kDone, "255"},
      {{"4294967296", "--type", "number"}, kUsage, "255"},
      {{"1x", "--type", "number"}, kUsage, "255"},
      {{"", "--type", "number"}, kUsage, "255"},
      {{"--type", "number", "--", "-1"}, kUsage, "255"},
      {{"01, fF20", "--type", "binary"}, kDone, "01,ff,20"},
      {{"012", "--type", "binary"}, kUsage, "01,ff,20"},
      {{"", "--type", "binary"}, kDone, ""},
      {{"1", "--type", "blob"}, kUsage, ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.value[0]);
    const Outcome set = RunVemra({"registry", "set", "Test\\Sub", "v"}, row.value);
    EXPECT_EQ(set.exitCode, row.exitCode) << set.err;
    EXPECT_EQ(Registry({"get", "test\\SUB", "V"}).out, row.shown + "\n");
  }
}

TEST_F(RegistryCommandTest, ListsAndDeletes) {
  Registry({"set", "Test\\b", "n", "7", "--type", "number"});
  Registry({"set", "Test", "", "unnamed"});
  EXPECT_EQ(Registry({"list", "Test"}).out,
            "Test\n  (default) = unnamed\nTest\\b\n  n = 7  (number)\n");
  const Json list = Json::parse(Registry({"list", "--json", "Test"}).out);
  EXPECT_EQ(list[1]["values"][0], (Json{{"name", "n"}, {"type", "number"}, {"data", 7}}));

  EXPECT_EQ(Registry({"delete", "Test"}).exitCode, kUsage);  // it has a key below it
  EXPECT_EQ(Registry({"delete", "Test\\b", "m"}).exitCode, kNothingFound);
  EXPECT_EQ(Registry({"delete", "Test\\b", "n"}).exitCode, kDone);
  EXPECT_EQ(Registry({"get", "Test\\b", "n"}).exitCode, kNothingFound);
  EXPECT_EQ(Registry({"delete", "Test", ""}).exitCode, kDone);
  EXPECT_EQ(Registry({"list", "Test"}).out, "Test\nTest\\b\n");
  EXPECT_EQ(Registry({"delete", "Test", "--all"}).exitCode, kDone);
  for (const char* const verb : {"list", "delete", "get"}) {
    const Outcome run = Registry({verb, "Test"});
    EXPECT_EQ(run.exitCode, kNothingFound);
    EXPECT_NE(run.err.find("there is no key SOFTWARE\\TAVO\\Test in "), std::string::npos);
  }
  EXPECT_EQ(Registry({"export", File("x.reg"), "Test"}).exitCode, kNothingFound);
}

TEST_F(RegistryCommandTest, ImportsWholeFilesOnly) {
  const std::string file = File("settings.reg");
  const std::string head = "REGEDIT4\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO\\Test]\n";
  Write("settings.reg", head + "\"a\"=\"1\"\n\"\xe4\"=dword:2\n");
  ASSERT_EQ(Registry({"import", file}).exitCode, kDone);
  const Outcome refused = Registry({"export", File("out.reg"), "Test"});
  EXPECT_EQ(refused.exitCode, kUsage);  // not UTF-8
  EXPECT_NE(refused.err.find("--ansi"), std::string::npos) << refused.err;
  ASSERT_EQ(Registry({"export", File("out.reg"), "Test", "--ansi"}).exitCode, kDone);

  Write("settings.reg", head + "\"a\"=\"2\"\n\"b\"=\"\n");
  const Outcome wrong = Registry({"import", file});
  EXPECT_EQ(wrong.exitCode, kUsage);
  EXPECT_NE(wrong.err.find(file + ":4: "), std::string::npos) << wrong.err;
  EXPECT_EQ(Registry({"get", "Test", "a"}).out, "1\n");

  Write("settings.reg", head + "\"a\"=-\n\"none\"=-\n[-HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO\\Tes]\n");
  ASSERT_EQ(Registry({"import", file}).exitCode, kDone);
  EXPECT_EQ(Registry({"get", "Test", "a"}).exitCode, kNothingFound);
  Write("settings.reg", "REGEDIT4\n[-HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO\\Test]\n");
  ASSERT_EQ(Registry({"import", file}).exitCode, kDone);
  EXPECT_EQ(Registry({"list", "Test"}).exitCode, kNothingFound);
  ASSERT_EQ(Registry({"import", File("out.reg")}).exitCode, kDone);
  EXPECT_EQ(Registry({"get", "Test", "\xe4"}).out, "2\n");

  EXPECT_EQ(Registry({"import", File("missing.reg")}).exitCode, kUsage);
  EXPECT_EQ(Registry({"export", File("no/x.reg"), "Test"}).exitCode, kUsage);
}

TEST_F(RegistryCommandTest, ConfigurationSaysWhereEachValueComesFrom) {
  Registry({"set", "Vemra Server", "MaxExpansions", "200", "--type", "number"});
  Registry({"set", "Vemra Server", "CGIRoot", "/cgi"});
  Registry({"set", "Vemra Server", "MaxThreads", "no number"});
  const Json config = Json::parse(RunVemra({"config", "--json"}).out);
  std::vector<std::string> rows;
  for (const Json& row : config["settings"]) {
    rows.push_back(row["name"].get<std::string>() + "=" + row["value"].get<std::string>() + " " +
                   row["source"].get<std::string>());
  }
  for (const char* const row :
       {"Vemra Server\\MaxExpansions=200 registry", "Vemra Server\\MaxThreads=0 default",
        "Vemra Server\\SiteSearch=1 default", "Gate URL=/cgi/VemraGate.exe derived"}) {
    EXPECT_NE(std::find(rows.begin(), rows.end(), row), rows.end()) << row;
  }
  EXPECT_EQ(rows.size(), 24U);
  const Outcome text = RunVemra({"config"});
  EXPECT_NE(text.out.find("\nVemra Server\\CGIRoot           registry  /cgi\n"), std::string::npos)
      << text.out;
  Registry({"delete", "Vemra Server", "--all"});
}

}  // namespace
}  // namespace vemra::commands
