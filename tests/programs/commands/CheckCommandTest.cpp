#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Support/definition/Tag.h"
#include "Support/foundation/INIWorker.h"
#include "programs/check/Patterns.h"
#include "programs/check/SettingsText.h"
#include "programs/commands/ExitCode.h"
#include "tests/TempFolder.h"
#include "tests/programs/commands/RunVemra.h"

namespace vemra::commands {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;

std::vector<std::string> Lines(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// A definition as the program writes it, in which each test makes one fault.
class CheckCommandTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { UseOwnRegistry(); }

  void SetUp() override {
    std::filesystem::create_directory(folder_.Host() / "docs");
    const Outcome created =
        RunVemra({"create", File("db.cfg"), "--folder", File("docs"), "--filter", "*.html;*.txt"});
    ASSERT_EQ(created.exitCode, kDone) << created.err;
  }

  std::string File(const std::string& name) const { return (folder_.Host() / name).string(); }
  Outcome Check() const { return RunVemra({"check", File("db.cfg")}); }

  // Puts text in the place of another, once, and gives the number of the line where mark stands
  // from then on.
  int Change(const std::string& name, const std::string& from, const std::string& to,
             const std::string& mark) const {
    std::string bytes = test::ReadHostFile(File(name));
    const std::size_t place = from.empty() ? bytes.size() : bytes.find(from);
    if (place == std::string::npos) {
      ADD_FAILURE() << name << " has no " << from;
      return 0;
    }
    bytes.replace(place, from.size(), to);
    test::WriteHostFile(File(name), bytes);
    const std::size_t at = bytes.find(mark, mark.size() > to.size() ? 0 : place);
    return 1 + static_cast<int>(std::count(bytes.begin(), bytes.begin() + at, '\n'));
  }

  test::TempFolder folder_;
};

struct Fault {
  const char* label;
  const char* file;
  std::string from;  // what stands there; empty: the end of the file
  std::string to;
  std::string mark;  // the text whose line is reported; empty: to
  const char* severity;
  std::string message;
  std::size_t findings = 1;  // with those that follow from it
};

std::string Z(const test::TempFolder& folder, const std::string& name) {
  return folder.Path(name);
}

TEST_F(CheckCommandTest, FindsNothingInWhatCreateWrites) {
  const Outcome run = Check();
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "5 files: 0 errors, 0 warnings\n");
  ASSERT_EQ(RunVemra({"create", File("t.cfg"), "--folder", File("docs"), "--filter", "*.txt",
                      "--language", "Default"})
                .exitCode,
            kDone);
  EXPECT_EQ(RunVemra({"check", File("t.cfg")}).out, "");
}

TEST_F(CheckCommandTest, ReportsEachFaultWithItsLine) {
  const std::string docs = Z(folder_, "docs");
  const std::string pairs = "[Path2URL]\r\nCount=2\r\nPath1=" + docs + "\r\nURL1=\r\n";
  const std::string oldPairs = "[Path2URL]\r\nCount=0\r\n";
  std::filesystem::create_directory(folder_.Host() / "docs" / "in");
  const std::vector<Fault> faults = {
      // Names.
      {"unknown section", "db.cfg", "[Schedule]", "[Shedule]", "", "warning", "one is [Schedule]"},
      {"unknown key", "db.cfg", "IndexDynamic=", "Indexdinamic=", "", "warning",
       "\"Indexdinamic\" is not read in [General Definitions]; the nearest known one is "
       "\"IndexDynamic\""},
      {"unknown numbered key", "db_html.ftd", "Tag Path 1=*<h1>*", "Tag Pfad 1=*<h1>*",
       "Tag Pfad 1", "warning", "one is \"Tag Path 1\"", 2},
      {"case does not matter", "db.cfg", "IndexDynamic=0", "INDEXdynamic=2", "", "error",
       "expected a number from 0 to 1"},
      {"key without =", "db.cfg", "UseSpider=NO", "UseSpider NO", "", "warning", "means nothing"},
      {"repeated key", "db.cfg", "ToolbarSize=80", "ToolbarSize=80\r\ntoolbarsize=90",
       "toolbarsize=90", "warning", "is repeated and not read; the one in line 8 counts"},
      {"repeated section", "db.cfg", "", "[ schedule ]\r\nUnit=7\r\n", "", "warning",
       "is repeated and not read"},
      {"before the sections", "db.cfg", "[General", "x=1\r\n[General", "", "warning",
       "before the first section"},
      {"beyond the table", "db.ini", "", "[FIELD125]\r\nNAME=x\r\n", "", "warning",
       "numbers are from 0 to 124"},
      {"leading zero", "db.ini", "[FIELD7]", "[FIELD07]", "", "warning", "nearest known one", 3},
      {"too few", "db.cfg", "File Types=2", "File Types=3", "", "error",
       "\"File Types\" in [General Definitions] is 3, but there is no [FileType3]", 1},
      {"too many", "db.cfg", "File Types=2", "File Types=1", "[FileType2]", "warning",
       "[FileType2] is not read: \"File Types\" in [General Definitions] is 1", 2},
      {"too many keys", "db_html.ftd", "Attribute Number=1", "Attribute Number=0",
       "Attribute Path 1", "warning", "is not read: \"Attribute Number\" in [Field2] is 0", 4},
      {"needed", "db.cfg", "Name=HTML", "Name=", "", "error", "[FileType1] has no \"Name\"", 2},
      {"no name", "db.cfg", "IndexName=db", "IndexName=", "", "error", "cannot be loaded"},

      // Values.
      {"flag", "db.cfg", "UseSpider=NO", "UseSpider=No", "", "error", "expected YES or NO"},
      {"number", "db.cfg", "Unit=0", "Unit=1x", "", "error", "expected a number from 0 to 2", 2},
      {"time", "db.cfg", "Last Index Time=00", "Last Index Time=24", "", "error", "09:05:03"},
      {"long", "db.cfg", "ToolbarURL=", "ToolbarURL=" + std::string(257, 'x'), "", "error",
       "only the first 256 bytes"},
      {"language", "db.cfg", "Language=Western\r\nRTL", "Language=Klingon\r\nRTL", "", "error",
       "no language of this name"},
      {"format", "db.cfg", "Format=Text", "Format=PDF", "", "error", "expected HTML or Text"},
      {"never due", "db.cfg", "Unit=0", "Unit=1", "Mask=0", "warning", "no update is ever due"},
      {"mask of months", "db.cfg", "Unit=0\r\nMask=0", "Unit=1\r\nMask=129", "Mask=129", "warning",
       "from 1 to 127"},
      {"day of the month", "db.cfg", "Unit=0\r\nMask=0", "Unit=2\r\nMask=1", "Time=0", "warning",
       "from 86400 to 2764799"},
      {"time of day", "db.cfg", "Unit=0\r\nMask=0\r\nTime=0", "Unit=1\r\nMask=1\r\nTime=86400",
       "Time=", "warning", "from 0 to 86399"},
      {"types without a name", "db.cfg", "File Types=2\r\n",
       "File Types=4\r\n[FileType3]\r\nFormat=Text\r\n[FileType4]\r\nFormat=Text\r\n",
       "[FileType3]", "error", "[FileType3] has no \"Name\"", 2},
      {"type named twice", "db.cfg", "Name=Text", "Name=HTML", "", "warning",
       "[FileType1] is named \"HTML\" too", 2},
      {"rule", "db.ini", "FIELDRULES=WILDCARD,AltSort", "FIELDRULES=WILDCARD,Altsort", "", "error",
       "\"Altsort\" is no field rule and is ignored; the nearest is AltSort"},

      // References.
      {"INDEX", "db.ini", "INDEX=0", "INDEX=0, 9", "", "error", "there is no field 9"},
      {"INDEX range", "db.ini", "INDEX=0", "INDEX=125", "", "error", "number from 0 to 124"},
      {"parent", "db.ini", "INDEX=0", "INDEX=0\r\nParent Field=77", "Parent Field", "error",
       "there is no field 77"},
      {"title", "db.ini", "Field=1", "Field=50", "", "error", "there is no field 50"},
      {"tag rules", "db_text.ftd", "[Field0]", "[Field99]", "", "error", "there is no field 99"},
      {"nothing refers", "db.ini", "[Titles]", "[FIELD9]\r\nNAME=Alone\r\nINDEX=9\r\n[Titles]",
       "[FIELD9]", "warning", "nothing refers to field 9 \"Alone\""},
      {"two links", "db.ini",
       "FIELDRULES=WILDCARD,PROXIMITY,AddToGeneral\r\nINDEX=0\r\nCHARSET="
       "67699721\r\n[FIELD7]",
       "FIELDRULES=Link\r\nINDEX=0\r\n[FIELD7]", "FIELDRULES=WILDCARD,PROXIMITY,Link,", "warning",
       "field 6 takes the role Link from field 5"},
      {"same name", "db.ini", "NAME=Heading", "NAME=Author", "", "warning", "field 2 is named"},
      {"elastic twice", "db.ini", "Items=1",
       "Items=2\r\n[Title Item 2]\r\nField=2\r\nMax. Length=0", "Max. Length=0", "warning",
       "only one title item"},
      {"no status field", "db.ini", "", "[Status]\r\nNumber=0\r\n", "", "warning", "rule Status"},
      {"no tag field", "db_html.ftd", "Add to Tag Field 1=0", "Add to Tag Field 1=1", "", "warning",
       "no field has the rule TAG"},
      {"no attribute field", "db_html.ftd", "Add to Attribute Field 1=0",
       "Add to Attribute Field 1=1", "", "warning", "no field has the rule ATTRIBUTE"},
      {"pattern", "db_html.ftd", "*<title>", "*title><", "", "warning", "can never match"},
      {"attribute", "db_html.ftd", "Attribute Name 1=author",
       "Attribute Name 1=", "Attribute Number=1", "error", "it matches no attribute"},

      // Files, folders and the path map.
      {"no fields file", "db.cfg", "INIFile=", "INIFile=no.ini", "", "error", "cannot be read"},
      {"no tag rules", "db.cfg", "FTD=db_html", "FTD=db_htm", "", "error", "cannot be read"},
      {"no look", "db.cfg", "LCLFile=", "LCLFile=look.lcl", "", "warning", "cannot be read"},
      {"no folder", "db.cfg", "LOGFile=", "LOGFile=logs\\db.log", "", "warning", "no folder"},
      {"unmapped", "db.cfg", "TempFolder=Z:", "TempFolder=Q:", "", "error", "maps nowhere"},
      {"pair without URL", "db.cfg", "Count=0", "Count=1\r\nPath1=" + docs, "Count=1", "error",
       "no \"URL1\"; the pair is skipped"},
      {"path inside another", "db.cfg", oldPairs, pairs + "Path2=" + docs + "\\in\r\nURL2=u\r\n",
       "Path2=", "warning", "lies inside"},
      {"same path", "db.cfg", oldPairs, pairs + "Path2=" + docs + "\r\nURL2=u\r\n",
       "Path1=", "warning", "is never used"},
      {"no file", "db.idx", "D,", "F,Z:\\no.txt\nD,", "F,", "warning", "there is no file"},

      // The index list.
      {"type not listed", "db.idx", "Types=2\nHTML,*.html\n", "Types=1\n", "[File Type List]",
       "warning", "\"HTML\" of ", 2},
      {"title's case", "db.idx", "[Files to Index]", "[Files To Index]", "", "warning",
       "the nearest known one is [Files to Index]", 6},
      {"too few types", "db.idx", "File Types=2", "File Types=3", "", "error", "only 2 lines"},
      {"unread type", "db.idx", "File Types=2", "File Types=1", "Text,", "warning",
       "is not read here", 3},
      {"unknown type", "db.idx", "HTML,", "Html,", "", "error", "the nearest is \"HTML\"", 4},
      {"type section", "db.idx", "\n[Text]", "\n[Test]", "[Test]", "warning", "one is [Text]", 2},
      {"item", "db.idx", "D,Z", "d,Z", "", "error", "is no item and is skipped", 2},
      {"folder", "db.idx", "docs,S", "dogs,S", "", "warning", "there is no folder"},
      {"unmapped folder", "db.idx", "D,Z:", "D,Q:", "", "error", "maps nowhere"},
      {"relative", "db.idx", "D,Z:", "D,..", "", "warning", "is relative", 2},
      {"blank in patterns", "db.idx", ",*.txt", ",*.txt; *.log", "", "warning",
       "the pattern \" *.log\" can never match"},
      {"folder in a pattern", "db.idx", ",*.txt", ",docs\\*.txt", "", "warning", "without its"},
      {"long line", "db.idx", ",*.txt", ",*.txt;" + std::string(245, 'x'), "", "error", "255"},
  };
  for (const Fault& fault : faults) {
    SCOPED_TRACE(fault.label);
    const std::string original = test::ReadHostFile(File(fault.file));
    const int line =
        Change(fault.file, fault.from, fault.to, fault.mark.empty() ? fault.to : fault.mark);
    const Outcome run = Check();
    const std::string start =
        File(fault.file) + ':' + std::to_string(line) + ": " + fault.severity + ": ";
    const std::vector<std::string> lines = Lines(run.out);
    EXPECT_EQ(lines.size(), fault.findings) << run.out;
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                            [&](const std::string& finding) {
                              return finding.starts_with(start) &&
                                     finding.find(fault.message) != std::string::npos;
                            }))
        << start << "... " << fault.message << "\n"
        << run.out;
    EXPECT_EQ(run.exitCode, run.out.find(": error: ") == std::string::npos ? kDone : kUsage);
    test::WriteHostFile(File(fault.file), original);
  }
}

TEST_F(CheckCommandTest, ReportsTagRulesThatFileTypesShareOnce) {
  Change("db.cfg", "FTD=db_text", "FTD=db_html", "FTD");
  Change("db_html.ftd", "*<title>", "*title><", "title");
  EXPECT_EQ(Lines(Check().out).size(), 1U) << Check().out;
}

TEST_F(CheckCommandTest, ReportsFoldersThatNoPairOfThePathMapCovers) {
  std::filesystem::create_directory(folder_.Host() / "docs" / "in");
  Change("db.cfg", "Count=0", "Count=1\r\nURL1=u\r\nPath1=" + Z(folder_, "docs\\in"), "Path1=");
  EXPECT_EQ(Lines(Check().out)[0], File("db.idx") + ":10: warning: documents of " + File("docs") +
                                       " have no URL: no path of [Path2URL] begins theirs");
  // The folder itself, and not one below it that sorts before the rest.
  Change("db.idx", "docs,S", "docs\\,S", "docs");
  Change("db.cfg", "URL1=", "Path2=" + Z(folder_, "docs") + "\r\nURL2=u\r\nURL1=", "URL1");
  Change("db.cfg", "docs\\in", "docs\\0", "docs");
  Change("db.cfg", "Count=1", "Count=2", "Count");
  EXPECT_THAT(Check().out, ::testing::Not(HasSubstr("have no URL")));
}

TEST_F(CheckCommandTest, ChecksTheLookAndFeel) {
  const std::string look = File("db.lcl");
  test::WriteHostFile(look,
                      "[Background]\nPath=a.gif\nTile=yes\n[Splash Screen]\nDisplay Time=7\n"
                      "[Personal Profile]\nColor=4294967296\nOn=YES\n");
  EXPECT_EQ(
      Check().out,
      look + ":2: warning: Path is \"a.gif\": there is no file " + File("a.gif") + "\n" + look +
          ":3: error: Tile is \"yes\": expected YES or NO, in capitals; NO is "
          "taken\n" +
          look + ":5: warning: the key \"Display Time\" is not read without \"Path\"\n" + look +
          ":7: error: Color is \"4294967296\": expected a number from 0 to "
          "4294967295\n");
}

TEST_F(CheckCommandTest, PrintsTheSameFactsAsJson) {
  Change("db.cfg", "UseSpider=NO", "UseSpider=\xe9\x01", "UseSpider");
  Change("db.idx", "docs,S", "dogs,S", "dogs");
  const Outcome text = Check();
  const Outcome run = RunVemra({"check", "--json", File("db.cfg")});
  EXPECT_EQ(run.exitCode, kUsage);
  const Json document = Json::parse(run.out);
  EXPECT_EQ(document["files"].size(), 5U);
  EXPECT_EQ(document["errors"], 1);
  EXPECT_EQ(document["warnings"], 1);
  std::string joined;
  for (const Json& finding : document["findings"]) {
    joined += finding["file"].get<std::string>() + ':' +
              std::to_string(finding["line"].get<int>()) + ": " +
              finding["severity"].get<std::string>() + ": " + finding["text"].get<std::string>() +
              '\n';
  }
  EXPECT_EQ(joined, text.out);
  EXPECT_THAT(joined, HasSubstr("UseSpider is \"\\xE9\\x01\": "));
}

TEST_F(CheckCommandTest, StopsSayingWhatIsWrongInAHopelessFile) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += "[x" + std::to_string(i) + "]\nkey\n";
  test::WriteHostFile(File("db.ini"), bytes);
  const Outcome run = Check();
  EXPECT_EQ(run.exitCode, kUsage);
  EXPECT_THAT(run.out, HasSubstr("there may be more that is wrong; it is not shown"));
  EXPECT_LT(Lines(run.out).size(), 1000U);

  test::WriteHostFile(File("db.ini"), std::string((8U << 20) + 1, 'x'));
  EXPECT_THAT(Check().out, HasSubstr("File too large"));
  std::filesystem::remove(File("db.cfg"));
  EXPECT_THAT(Check().out, HasSubstr("db.cfg:1: error: the configuration "));
}

// A configuration that names the golden file as one of its own.
std::string ConfigurationFor(const std::string& name) {
  const std::filesystem::path file = name;
  const auto use = [&](const char* extension, const char* otherwise) {
    return (file.extension() == extension ? name : otherwise) + "\n";
  };
  return "[General Definitions]\nIndexName=x\nFile Types=1\n[FileType1]\nName=HTML\nFormat=HTML\n"
         "FTD=" +
         use(".ftd", "") + "[File Names]\nINIFile=" + use(".ini", "fields.ini") +
         "IDXFile=" + use(".idx", "list.idx") + "LCLFile=" + use(".lcl", "");
}

// The files that the library's tests write and read may hold odd values, and refer to what is not
// there, but no name that is not known and nothing twice.
TEST(CheckGoldenFiles, KnowsEveryName) {
  UseOwnRegistry();
  const test::TempFolder folder;
  const std::filesystem::path data = VEMRA_TEST_DATA "/definition";
  std::filesystem::copy(data, folder.Host());
  int checked = 0;
  for (const auto& entry : std::filesystem::directory_iterator(data)) {
    const std::string name = entry.path().filename();
    SCOPED_TRACE(name);
    const bool isConfiguration = entry.path().extension() == ".cfg";
    if (!isConfiguration) test::WriteHostFile(folder.Host() / "x.cfg", ConfigurationFor(name));
    const Outcome run =
        RunVemra({"check", (folder.Host() / (isConfiguration ? name : "x.cfg")).string()});
    for (const std::string& line : Lines(run.out)) {
      if (!line.starts_with((folder.Host() / name).string())) continue;
      ++checked;
      EXPECT_THAT(line, ::testing::Not(::testing::AnyOf(
                            HasSubstr("one is ["), HasSubstr("one is \""), HasSubstr("is repeated"),
                            HasSubstr("means nothing"))));
    }
  }
  EXPECT_GT(checked, 10) << "the files were not read";
}

// Every value that the settings layer finds is found here, and no other.
TEST(CheckSettingsText, AgreesWithTheSettingsLayer) {
  const test::TempFolder folder;
  const char* const kPieces[] = {"[a]",  "[ B ]", "[a]]", "[",  "]",   "k=1",  " K = 'x' ", "\"",
                                 "k",    "=",     ";",    "\n", "\r",  "\r\n", "\t",        "\x1a",
                                 "\xe9", "l=\"y", "[]",   " ",  "=z=", "\n",   "k= ",       "\n"};
  const std::string sections[] = {"a", "B", "a]", "", "[", "\xe9"};
  const std::string keys[] = {"k", "l", ";k", "\xe9", "]", "\xe9k", "k[a]"};
  std::uint32_t seed = 1;
  const auto next = [&seed] { return (seed = seed * 1664525U + 1013904223U) >> 16; };
  for (int round = 0; round < 400; ++round) {
    std::string text = round % 8 == 0 ? "\xef\xbb\xbf" : "";
    for (std::uint32_t i = next() % 30; i > 0; --i) text += kPieces[next() % std::size(kPieces)];
    if (round % 16 == 1) text += std::string("\nk=9\0x\nl=8", 10);
    SCOPED_TRACE(::testing::PrintToString(text));
    const std::string name = "x" + std::to_string(round) + ".ini";
    test::WriteHostFile(folder.Host() / name, text);
    INIWorker worker(folder.Path(name));
    worker.SetDefault("(missing)");
    const check::SettingsText own(text);
    for (const std::string& section : sections) {
      for (const std::string& key : keys) {
        std::string expected;
        worker.GetStringWithDefault(section, key, expected, "(missing)");
        const auto* entry = own.Find(section, key);
        if (key.starts_with(';')) continue;  // comments are left out here
        EXPECT_EQ(entry == nullptr ? "(missing)" : std::string(entry->value), expected)
            << section << ' ' << key;
      }
    }
  }
}

// Every pattern up to six characters against every path of up to three elements: one that is said
// to match nothing matches none, and any other at least one.
TEST(CheckPatterns, SaysExactlyWhichPatternsMatchNoPath) {
  std::vector<std::string> paths{""};
  for (std::size_t begin = 0, depth = 0; depth < 3; ++depth) {
    const std::size_t end = paths.size();
    for (; begin < end; ++begin) {
      for (std::size_t length = 1; length <= 5; ++length) {
        paths.push_back(paths[begin] + '<' + std::string(length, 'a') + '>');
      }
    }
  }
  std::vector<std::string> patterns{""};
  for (std::size_t i = 0; i < patterns.size(); ++i) {
    if (patterns[i].size() == 6) break;
    for (const char c : {'<', '>', 'a', '*'}) patterns.push_back(patterns[i] + c);
  }
  for (const std::string& pattern : patterns) {
    const CTavoTag tag(pattern);
    const bool matches = std::any_of(paths.begin(), paths.end(), [&](const std::string& path) {
      return tag.CheckPath(path) != 0;
    });
    EXPECT_EQ(check::TagPathFault(pattern).empty(), matches) << pattern;
  }
}

}  // namespace
}  // namespace vemra::commands
