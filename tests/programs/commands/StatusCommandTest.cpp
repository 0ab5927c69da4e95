#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "tests/TimeZone.h"
#include "tests/programs/commands/RunVemra.h"

namespace vemra::commands {
namespace {

using ::testing::HasSubstr;

class StatusCommandTest : public VemraTest {
 protected:
  void SetUp() override {
    Write("docs/a.txt", "cat");
    Create();
  }
  Outcome Status() const { return Vemra({"status"}); }
  Json JsonStatus() const { return Json::parse(Vemra({"status", "--json"}).out); }
  void Change(const std::string& from, const std::string& to) const { Replace("db.cfg", from, to); }
};

TEST_F(StatusCommandTest, ShowsADatabaseThatWasNeverIndexed) {
  const Outcome run = Status();
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_THAT(run.out, HasSubstr("Loadable     no\nLast update  never\nNext update  none\n"
                                 "Texts        none, nothing was indexed yet\n"));
  EXPECT_THAT(run.out, HasSubstr("missing  " + File("db.vix") + "\n"));
  const Json status = JsonStatus();
  EXPECT_EQ(status["loadable"], false);
  EXPECT_EQ(status["lastUpdate"].dump(), R"({"ok":true,"time":null})");
  for (const char* key : {"texts", "indexBytes", "indexFault"}) {
    EXPECT_TRUE(status[key].is_null()) << key;
  }
}

TEST_F(StatusCommandTest, ShowsWhatAnUpdateLeft) {
  ASSERT_EQ(Vemra({"index"}).exitCode, kDone);
  const Json status = JsonStatus();
  EXPECT_EQ(status["database"], "db");
  EXPECT_EQ(status["language"]["name"], "Western");
  EXPECT_TRUE(status["language"]["fault"].is_null());
  EXPECT_EQ(status["loadable"], true);
  EXPECT_EQ(status["texts"], 1);
  EXPECT_EQ(status["indexBytes"], std::filesystem::file_size(File("db.vix")));
  EXPECT_EQ(status["files"].size(), 10U);
  for (const Json& file : status["files"]) {
    SCOPED_TRACE(file.dump());
    const bool exists = std::filesystem::exists(file["path"].get<std::string>());
    EXPECT_EQ(file["exists"], exists);
    EXPECT_EQ(file["bytes"].is_null(), !exists);
    EXPECT_EQ(file["changed"].is_null(), !exists);
  }
  EXPECT_THAT(Status().out, HasSubstr("Texts        1\n"));
}

TEST_F(StatusCommandTest, TellsTimesInLocalTimeToPeopleAndInUtcToPrograms) {
  const test::TimeZone zone("EST5");
  Change("Last Index Time=", "Index OK=NO\r\nLast Index Time=21:05:03 29/02/2024\r\nx=");
  const auto changed = std::chrono::sys_seconds(std::chrono::seconds(1735696800));
  std::filesystem::last_write_time(File("db.ini"), std::chrono::file_clock::from_sys(changed));
  Change("Index OK=YES", "");
  EXPECT_THAT(Status().out, HasSubstr("2024-02-29 21:05:03, and one that failed since\n"));
  EXPECT_THAT(Status().out, HasSubstr("2024-12-31 21:00:00  " + File("db.ini")));
  const Json status = JsonStatus();
  EXPECT_EQ(status["lastUpdate"].dump(), R"({"ok":false,"time":"2024-03-01T02:05:03Z"})");
  EXPECT_EQ(status["files"][2]["changed"], "2025-01-01T02:00:00Z");

  Change("Unit=0\r\nMask=0\r\nTime=0", "Unit=1\r\nMask=127\r\nTime=3600");
  EXPECT_THAT(JsonStatus()["nextUpdate"].get<std::string>(), ::testing::EndsWith("T06:00:00Z"));
  EXPECT_THAT(Status().out, HasSubstr(" 01:00:00\nTexts"));
}

TEST_F(StatusCommandTest, ServesADatabaseInPieces) {
  Change("Language=Western", "Language=Klingon");
  std::filesystem::remove(File("db.ini"));
  Write("db.vix", std::string(9000, 'x'));
  const Outcome run = Status();
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_THAT(run.out, HasSubstr("Klingon (not registered on this computer)"));
  EXPECT_THAT(run.out, HasSubstr("missing  " + File("db.ini")));
  const Json status = JsonStatus();
  EXPECT_TRUE(status["texts"].is_null());
  EXPECT_EQ(status["indexBytes"], 9000);
  EXPECT_THAT(status["indexFault"].get<std::string>(), HasSubstr("db.vix"));
  Change("IndexName=db", "IndexName=");
  EXPECT_EQ(Status().exitCode, kUsage);
  EXPECT_THAT(Status().err, HasSubstr(File("db.cfg") + ":2: "));
  EXPECT_EQ(RunVemra({"status", File("no.cfg")}).exitCode, kUsage);
}

}  // namespace
}  // namespace vemra::commands
