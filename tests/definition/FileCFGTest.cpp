#include "Support/definition/FileCFG.h"

#include <gtest/gtest.h>

#include "Support/definition/FileIDX.h"
#include "Support/definition/FileLCL.h"
#include "Support/foundation/INIException.h"
#include "Support/foundation/INIWorker.h"
#include "Support/platform/Clock.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

class FileCFGTest : public ::testing::Test {
 protected:
  std::string Put(const std::string& name, const std::string& text) {
    test::WriteHostFile(folder_.Host() / name, text);
    return folder_.Path(name);
  }
  std::string Get(const std::string& name) { return test::ReadHostFile(folder_.Host() / name); }
  static std::string Golden(const char* name) {
    return test::ReadHostFile(std::string(VEMRA_TEST_DATA "/definition/") + name);
  }

  test::TempFolder folder_;
};

TEST_F(FileCFGTest, DerivesEverythingFromTheName) {
  CTavoFileCFG cfg(Put("db1.cfg", "[General Definitions]\nIndexName=db1\nIndexFolder=D:\\i\\\n"));
  EXPECT_EQ(cfg.GetDatabaseID(), folder_.Path("db1.cfg"));
  const std::pair<std::string, const char*> kFiles[] = {
      {cfg.GetFileINI(), "ini"}, {cfg.GetFileIDX(), "idx"},   {cfg.GetFileFIN(), "fin"},
      {cfg.GetFileLOG(), "log"}, {cfg.GetFileLCL(), "lcl"},   {cfg.GetFileSFM(), "sfm"},
      {cfg.GetFileSPD(), "spd"}, {cfg.GetAccessFile(), "acc"}};
  for (const auto& [path, extension] : kFiles) {
    EXPECT_EQ(path, folder_.Path(std::string("db1.") + extension));
  }
  EXPECT_EQ(cfg.GetIndexDestFolder(), "D:\\i");
  EXPECT_TRUE(cfg.IsLastUpdateOK());
  EXPECT_FALSE(cfg.IsLoadable());
  EXPECT_EQ(cfg.GetToolbarSize(), "80");
  EXPECT_NE(cfg.GetTempFolder().back(), '\\');
  EXPECT_EQ(cfg.GetNextUpdateTime(), DateTime());
}

TEST_F(FileCFGTest, ReadsTheGoldenFile) {
  CTavoFileCFG cfg;
  cfg.SetIDX(new CTavoFileIDX, 1);
  cfg.SetIDX(cfg.GetIDX(), 1);  // still its own
  ASSERT_EQ(cfg.Load(Put("db.cfg", Golden("db.cfg"))), 1);
  EXPECT_EQ(cfg.GetFileINI(), folder_.Path("sub\\x.ini"));
  EXPECT_EQ(cfg.GetFileFIN(), "D:\\y.fin");
  EXPECT_EQ(cfg.GetSchedule(), SCHEDULE::kMonthly);
  EXPECT_EQ(cfg.GetScheduleTime(), TimeSpan(15, 6, 0, 0));
  EXPECT_EQ(cfg.GetLastUpdateTime().GetLocal().day, 7);
  EXPECT_EQ(cfg.GetIDX()->GetNumOfFileTypes(), 2);
  cfg.PreparePath2URL();
  EXPECT_EQ(cfg.GetURL("c:\\docs\\a.htm"), "http://host/docs/a.htm");
}

TEST_F(FileCFGTest, FailsToLoad) {
  CTavoFileCFG cfg;
  cfg.SetLanguage("before");
  EXPECT_EQ(cfg.Load(folder_.Path("none.cfg")), 0);
  EXPECT_EQ(cfg.GetLanguage(), "before") << "unchanged";
  EXPECT_EQ(cfg.Load(Put("a.cfg", "[General Definitions]\nIndexName=\nLanguage=x\n")), 0);
  EXPECT_EQ(cfg.SaveAs(folder_.Path("b.cfg")), 1);
  EXPECT_THROW(cfg.SaveAs(folder_.Path("none\\b.cfg")), TavoINIException);
}

TEST_F(FileCFGTest, AnUpdateOpensTheDatabaseOnlyWhenItSucceeds) {
  CTavoFileCFG cfg;
  cfg.SetFileName(folder_.Path("db.cfg"));
  cfg.Create("db", "D:\\index", 0);
  ASSERT_EQ(cfg.Save(), 1);
  EXPECT_EQ(Get("db.cfg").find("Loadable"), std::string::npos) << "saving never writes it";

  for (const bool ok : {true, false}) {
    SCOPED_TRACE(ok);
    const platform::SetClock clock(ok ? 1700000000 : 1700009999);
    cfg.MarkUpdateStarted();
    EXPECT_FALSE(CTavoFileCFG(folder_.Path("db.cfg")).IsLoadable());
    cfg.MarkUpdateFinished(ok);
    const CTavoFileCFG stored(folder_.Path("db.cfg"));
    EXPECT_EQ(stored.IsLoadable(), ok);
    EXPECT_EQ(stored.IsLastUpdateOK(), ok);
    EXPECT_EQ(stored.GetLastUpdateTime().GetSeconds(), 1700000000) << "of the last good one";
  }
}

TEST_F(FileCFGTest, MovesADefinition) {
  const std::string path = Put(
      "db.cfg",
      "[General Definitions]\r\nIndexFolder=C:\\old\r\n[File Names]\r\nINIFile=C:\\old\\a.ini\r\n"
      "IDXFile=b.idx\r\nSPDFile=C:\\old\\s.spd\r\n[FileType0]\r\nFTD=C:\\old\\zero.ftd\r\n"
      "[FileType1]\r\nFTD=one.x.ftd\r\n[FileType3]\r\nFTD=three.ftd\r\n");
  ASSERT_EQ(CTavoFileCFG::UpdateCFGFile(path, "D:\\new"), 1);
  EXPECT_EQ(Get("db.cfg"),
            "[General Definitions]\r\nIndexFolder=D:\\new\r\n[File Names]\r\n"
            "INIFile=D:\\new\\a.ini\r\nIDXFile=D:\\new\\b.idx\r\nSPDFile=C:\\old\\s.spd\r\n"
            "FINFile=D:\\new\\\r\nLOGFile=D:\\new\\\r\nSFMFile=D:\\new\\\r\nLCLFile=D:\\new\\\r\n"
            "[FileType0]\r\nFTD=D:\\new\\zero.ftd\r\n[FileType1]\r\nFTD=D:\\new\\one.x.ftd\r\n"
            "[FileType3]\r\nFTD=three.ftd\r\n[FileType2]\r\nFTD=D:\\new\\\r\n");
  EXPECT_EQ(CTavoFileCFG::UpdateCFGFile(folder_.Path("none\\db.cfg"), "D:\\new"), 0);
}

TEST_F(FileCFGTest, LookAndFeelReadsTheGoldenFile) {
  CTavoFileLCL look;
  ASSERT_EQ(look.Load(Put("look.lcl", Golden("look.lcl"))), 1);
  EXPECT_EQ(look.GetBackground(), folder_.Path("pics\\back.gif"));
  EXPECT_EQ(look.GetDisplayTime(), 7);
  EXPECT_EQ(look.GetPersonalProfileColor(), 255U);
  EXPECT_EQ(look.GetLimitation(), "two columns");
  look.SetAbout(folder_.Path("pics\\about.gif"));
  EXPECT_EQ(look.GetPartAbout(), "pics\\about.gif");
  EXPECT_EQ(look.Save(folder_.Path("none\\out.lcl")), 0);

  look.Load(Put("off.lcl",
                "[Splash Screen]\nDisplay Time=9\n[Personal Profile]\nOn=1\nColor=5\n"
                "Background=x.gif\n"));
  EXPECT_EQ(look.GetDisplayTime(), 1) << "no splash picture";
  EXPECT_EQ(look.IsPersonalProfileOn(), 0);
  EXPECT_EQ(look.GetPersonalProfileColor(), 0U);
  EXPECT_EQ(look.GetPersonalProfileBackground(), "");
}

}  // namespace
}  // namespace vemra
