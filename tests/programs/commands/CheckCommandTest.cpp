#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Support/definition/Tag.h"
#include "Support/foundation/INIWorker.h"
#include "programs/check/Patterns.h"
#include "programs/check/SettingsText.h"
#include "tests/programs/commands/RunVemra.h"

namespace vemra::commands {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::vector<std::string> Lines(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

struct Fault {
  const char* file;
  std::string from;  // what stands there; empty: the end of the file
  std::string to;
  std::string message;
  std::string mark = "";     // the text whose line is reported; empty: to
  std::size_t findings = 1;  // with those that follow from it
};

// A definition as the program writes it, in which each test makes one fault.
class CheckCommandTest : public VemraTest {
 protected:
  void SetUp() override { Create({"--filter", "*.html;*.txt"}); }

  Outcome Check() const { return Vemra({"check"}); }

  // Changes a file, and gives the number of the line where mark stands from then on.
  int Change(const std::string& name, const std::string& from, const std::string& to,
             const std::string& mark) const {
    const std::size_t place = Replace(name, from, to);
    const std::string bytes = Read(name);
    const std::size_t at = bytes.find(mark, mark.size() > to.size() ? 0 : place);
    return 1 + static_cast<int>(std::count(bytes.begin(), bytes.begin() + at, '\n'));
  }

  void ExpectFinding(const Fault& fault, const std::string& severity) const {
    SCOPED_TRACE(fault.to);
    const std::string original = Read(fault.file);
    const int line =
        Change(fault.file, fault.from, fault.to, fault.mark.empty() ? fault.to : fault.mark);
    const Outcome run = Check();
    const std::string start = File(fault.file) + ':' + std::to_string(line) + ": " + severity;
    const std::vector<std::string> lines = Lines(run.out);
    EXPECT_EQ(lines.size(), fault.findings) << run.out;
    EXPECT_THAT(lines, Contains(AllOf(StartsWith(start + ": "), HasSubstr(fault.message))));
    EXPECT_EQ(run.exitCode, run.out.find(": error: ") == std::string::npos ? kDone : kUsage);
    Write(fault.file, original);
  }
};

TEST_F(CheckCommandTest, FindsNothingInWhatCreateWrites) {
  EXPECT_EQ(Check().err, "5 files: 0 errors, 0 warnings\n");
  Create({"--filter", "*.txt", "--language", "Default", "--force"});
  EXPECT_EQ(Check().exitCode, kDone);
  EXPECT_EQ(Check().out, "");
}

TEST_F(CheckCommandTest, ReportsEachFaultWithItsLine) {
  const std::string docs = folder_.Path("docs");
  const std::string pairs = "[Path2URL]\r\nCount=2\r\nPath1=" + docs + "\r\nURL1=\r\n";
  const std::string oldPairs = "[Path2URL]\r\nCount=0\r\n";
  std::filesystem::create_directory(File("docs/in"));
  const std::vector<Fault> errors = {
      {"db.cfg", "IndexDynamic=0", "INDEXdynamic=2", "expected a number from 0 to 1"},
      {"db.cfg", "File Types=2", "File Types=3",
       "\"File Types\" in [General Definitions] is 3, but there is no [FileType3]"},
      {"db.cfg", "Name=HTML", "Name=", "[FileType1] has no \"Name\"", "", 2},
      {"db.cfg", "IndexName=db", "IndexName=", "cannot be loaded"},
      {"db.cfg", "UseSpider=NO", "UseSpider=No", "expected YES or NO"},
      {"db.cfg", "Unit=0", "Unit=1x", "expected a number from 0 to 2", "", 2},
      {"db.cfg", "Last Index Time=00", "Last Index Time=24", "09:05:03"},
      {"db.cfg", "ToolbarURL=", "ToolbarURL=" + std::string(257, 'x'), "only the first 256 bytes"},
      {"db.cfg", "Language=Western\r\nRTL", "Language=Klingon\r\nRTL", "no language of this name"},
      {"db.cfg", "Format=Text", "Format=PDF", "expected HTML or Text"},
      {"db.cfg", "File Types=2\r\n",
       "File Types=4\r\n[FileType3]\r\nFormat=Text\r\n[FileType4]\r\nFormat=Text\r\n",
       "[FileType3] has no \"Name\"", "[FileType3]", 2},
      {"db.ini", "FIELDRULES=WILDCARD,AltSort", "FIELDRULES=WILDCARD,Altsort",
       "\"Altsort\" is no field rule and is ignored; the nearest is AltSort"},
      {"db.ini", "INDEX=0", "INDEX=0, 9", "there is no field 9"},
      {"db.ini", "INDEX=0", "INDEX=125", "number from 0 to 124"},
      {"db.ini", "INDEX=0", "INDEX=0\r\nParent Field=77", "there is no field 77", "Parent Field"},
      {"db.ini", "Field=1", "Field=50", "there is no field 50"},
      {"db_text.ftd", "[Field0]", "[Field99]", "there is no field 99"},
      {"db_html.ftd", "Attribute Name 1=author", "Attribute Name 1=", "it matches no attribute",
       "Attribute Number=1"},
      {"db.cfg", "INIFile=", "INIFile=no.ini", "cannot be read"},
      {"db.cfg", "FTD=db_html", "FTD=db_htm", "cannot be read"},
      {"db.cfg", "TempFolder=Z:", "TempFolder=Q:", "maps nowhere"},
      {"db.cfg", "Count=0", "Count=1\r\nPath1=" + docs, "no \"URL1\"; the pair is skipped",
       "Count=1"},
      {"db.cfg", "Unit=0\r\nMask=0\r\nTime=0", "Unit=2\r\nMask=1\r\nTime=2764800",
       "from 0 to 2764799", "Time="},
      {"db.idx", "File Types=2", "File Types=3", "only 2 lines"},
      {"db.idx", "HTML,", "Html,", "the nearest is \"HTML\"", "", 4},
      {"db.idx", "D,Z", "d,Z", "is no item and is skipped", "", 2},
      {"db.idx", "D,Z:", "D,Q:", "maps nowhere"},
      {"db.idx", ",*.txt", ",*.txt;" + std::string(245, 'x'), "255"},
  };
  const std::vector<Fault> warnings = {
      {"db.cfg", "[Schedule]", "[Shedule]", "one is [Schedule]"},
      {"db.cfg", "IndexDynamic=", "Indexdinamic=",
       "\"Indexdinamic\" is not read in [General Definitions]; the nearest known one is "
       "\"IndexDynamic\""},
      {"db_html.ftd", "Tag Path 1=*<h1>*", "Tag Pfad 1=*<h1>*", "one is \"Tag Path 1\"",
       "Tag Pfad 1", 2},
      {"db.cfg", "UseSpider=NO", "UseSpider NO", "means nothing"},
      {"db.cfg", "ToolbarSize=80", "ToolbarSize=80\r\ntoolbarsize=90",
       "is repeated and not read; the one in line 8 counts", "toolbarsize=90"},
      {"db.cfg", "", "[ schedule ]\r\nUnit=7\r\n", "is repeated and not read"},
      {"db.cfg", "[General", "x=1\r\n[General", "before the first section"},
      {"db.ini", "", "[FIELD125]\r\nNAME=x\r\n", "numbers are from 0 to 124"},
      {"db.ini", "[FIELD7]", "[FIELD07]", "nearest known one", "", 3},
      {"db.cfg", "File Types=2", "File Types=1",
       "[FileType2] is not read: \"File Types\" in [General Definitions] is 1", "[FileType2]", 2},
      {"db_html.ftd", "Attribute Number=1", "Attribute Number=0",
       "is not read: \"Attribute Number\" in [Field2] is 0", "Attribute Path 1", 4},
      {"db.cfg", "Unit=0", "Unit=1", "no update is ever due", "Mask=0"},
      {"db.cfg", "Unit=0\r\nMask=0", "Unit=1\r\nMask=129", "from 1 to 127", "Mask=129"},
      {"db.cfg", "Unit=0\r\nMask=0", "Unit=2\r\nMask=1", "from 86400 to 2764799", "Time=0"},
      {"db.cfg", "Unit=0\r\nMask=0\r\nTime=0", "Unit=1\r\nMask=1\r\nTime=86400", "from 0 to 86399",
       "Time="},
      {"db.cfg", "Name=Text", "Name=HTML", "[FileType1] is named \"HTML\" too", "", 2},
      {"db.ini", "[Titles]", "[FIELD9]\r\nNAME=Alone\r\nINDEX=9\r\n[Titles]",
       "nothing refers to field 9 \"Alone\"", "[FIELD9]"},
      {"db.ini", "FIELDRULES=WILDCARD,PROXIMITY,AddToGeneral", "FIELDRULES=Link",
       "field 5 takes the role Link from field 2"},
      {"db.ini", "NAME=Heading", "NAME=Author", "field 2 is named"},
      {"db.ini", "Items=1", "Items=2\r\n[Title Item 2]\r\nField=2\r\nMax. Length=0",
       "only one title item", "Max. Length=0"},
      {"db.ini", "", "[Status]\r\nNumber=0\r\n", "rule Status"},
      {"db_html.ftd", "Add to Tag Field 1=0", "Add to Tag Field 1=1", "no field has the rule TAG"},
      {"db_html.ftd", "Add to Attribute Field 1=0", "Add to Attribute Field 1=1",
       "no field has the rule ATTRIBUTE"},
      {"db_html.ftd", "*<title>", "*title><", "can never match"},
      {"db.cfg", "LCLFile=", "LCLFile=look.lcl", "cannot be read"},
      {"db.cfg", "LOGFile=", "LOGFile=logs\\db.log", "no folder"},
      {"db.cfg", oldPairs, pairs + "Path2=" + docs + "\\in\r\nURL2=u\r\n", "lies inside", "Path2="},
      {"db.cfg", oldPairs, pairs + "Path2=" + docs + "\r\nURL2=u\r\n", "is never used", "Path1="},
      {"db.idx", "D,", "F,Z:\\no.txt\nD,", "there is no file", "F,"},
      {"db.idx", "Types=2\nHTML,*.html\n", "Types=1\n", "\"HTML\" of ", "[File Type List]", 2},
      {"db.idx", "[Files to Index]", "[Files To Index]",
       "the nearest known one is [Files to Index]", "", 6},
      {"db.idx", "File Types=2", "File Types=1", "is not read here", "Text,", 3},
      {"db.idx", "\n[Text]", "\n[Test]", "one is [Text]", "[Test]", 2},
      {"db.idx", "docs,S", "dogs,S", "there is no folder"},
      {"db.idx", "D,Z:", "D,none", "is relative", "", 2},
      {"db.idx", ",*.txt", ",*.txt; *.log", "the pattern \" *.log\" can never match"},
      {"db.idx", ",*.txt", ",docs\\*.txt", "without its"},
  };
  for (const Fault& fault : errors) ExpectFinding(fault, "error");
  for (const Fault& fault : warnings) ExpectFinding(fault, "warning");
}

TEST_F(CheckCommandTest, ReportsTagRulesThatFileTypesShareOnce) {
  Replace("db.cfg", "FTD=db_text", "FTD=db_html");
  Replace("db_html.ftd", "*<title>", "*title><");
  EXPECT_EQ(Lines(Check().out).size(), 1U) << Check().out;
}

TEST_F(CheckCommandTest, ReportsFoldersThatNoPairOfThePathMapCovers) {
  std::filesystem::create_directory(File("docs/in"));
  Replace("db.cfg", "Count=0", "Count=1\r\nURL1=u\r\nPath1=" + folder_.Path("docs\\in"));
  EXPECT_EQ(Lines(Check().out)[0], File("db.idx") + ":10: warning: documents of " + File("docs") +
                                       " have no URL: no path of [Path2URL] begins theirs");
  // The folder itself, and not one below it that sorts before the rest.
  Replace("db.idx", "docs,S", "docs\\,S");
  Replace("db.cfg", "URL1=", "Path2=" + folder_.Path("docs") + "\r\nURL2=u\r\nURL1=");
  Replace("db.cfg", "docs\\in", "docs\\0");
  Replace("db.cfg", "Count=1", "Count=2");
  EXPECT_THAT(Check().out, Not(HasSubstr("have no URL")));
}

TEST_F(CheckCommandTest, ChecksTheLookAndFeel) {
  const std::string look = File("db.lcl");
  Write("db.lcl",
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
  Replace("db.cfg", "UseSpider=NO", "UseSpider=\xe9\x01");
  Replace("db.idx", "docs,S", "dogs,S");
  const Outcome text = Check();
  const Outcome run = Vemra({"check", "--json"});
  EXPECT_EQ(run.exitCode, kUsage);
  const Json document = Json::parse(run.out);
  EXPECT_EQ(document["files"].size(), 5U);
  EXPECT_EQ(document["errors"], 1);
  EXPECT_EQ(document["warnings"], 1);
  std::string joined;
  for (const Json& finding : document["findings"]) {
    joined += finding["file"].get<std::string>() + ':' + finding["line"].dump() + ": " +
              finding["severity"].get<std::string>() + ": " + finding["text"].get<std::string>() +
              '\n';
  }
  EXPECT_EQ(joined, text.out);
  EXPECT_THAT(joined, HasSubstr("UseSpider is \"\\xE9\\x01\": "));
}

TEST_F(CheckCommandTest, StopsSayingWhatIsWrongInAHopelessFile) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += "[x" + std::to_string(i) + "]\nkey\n";
  Write("db.ini", bytes);
  const Outcome run = Check();
  EXPECT_EQ(run.exitCode, kUsage);
  EXPECT_THAT(run.out, HasSubstr("there may be more that is wrong; it is not shown"));
  EXPECT_LT(Lines(run.out).size(), 1000U);

  Write("db.ini", std::string((8U << 20) + 1, 'x'));
  EXPECT_THAT(Check().out, HasSubstr("File too large"));
  std::filesystem::remove(File("db.cfg"));
  EXPECT_THAT(Check().out, HasSubstr("db.cfg:1: error: the configuration "));
}

using CheckGoldenFiles = VemraTest;

// The files that the library's tests write and read may hold odd values, and refer to what is not
// there, but no name that is not known and nothing twice.
TEST_F(CheckGoldenFiles, KnowsEveryName) {
  const std::filesystem::path data = VEMRA_TEST_DATA "/definition";
  std::filesystem::copy(data, folder_.Host());
  int checked = 0;
  for (const auto& entry : std::filesystem::directory_iterator(data)) {
    const std::string name = entry.path().filename();
    const std::string extension = entry.path().extension();
    // A configuration that names the file as one of its own.
    const auto use = [&](const char* wanted, const char* otherwise = "") {
      return (extension == wanted ? name : otherwise) + "\n";
    };
    Write("x.cfg",
          "[General Definitions]\nIndexName=x\nFile Types=1\n[FileType1]\nName=HTML\n"
          "Format=HTML\nFTD=" +
              use(".ftd") + "[File Names]\nINIFile=" + use(".ini", "fields.ini") +
              "IDXFile=" + use(".idx", "list.idx") + "LCLFile=" + use(".lcl"));
    for (const std::string& line :
         Lines(RunVemra({"check", File(extension == ".cfg" ? name : "x.cfg")}).out)) {
      if (!line.starts_with(File(name))) continue;
      ++checked;
      EXPECT_THAT(line, Not(AnyOf(HasSubstr("one is ["), HasSubstr("one is \""),
                                  HasSubstr("is repeated"), HasSubstr("means nothing"))));
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
    const auto matchesTag = [&](const std::string& path) { return tag.CheckPath(path) != 0; };
    const bool matches = std::any_of(paths.begin(), paths.end(), matchesTag);
    EXPECT_EQ(check::TagPathFault(pattern).empty(), matches) << pattern;
  }
}

}  // namespace
}  // namespace vemra::commands
