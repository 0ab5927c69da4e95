// What docs/ says of the files of a definition, against the program.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iomanip>
#include <string>

#include "Support/definition/BitArray.h"
#include "Support/definition/FileDict.h"
#include "Support/foundation/File.h"
#include "programs/check/KeyTable.h"
#include "tests/programs/commands/RunVemra.h"

namespace vemra::commands {
namespace {

using ::testing::HasSubstr;

std::string ReadPage(const char* name) {
  return test::ReadHostFile(std::filesystem::path(VEMRA_DOCS) / name);
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
}

// "00 FF": as the pages show bytes.
std::string Hex(const std::string& bytes) {
  std::ostringstream text;
  text << std::hex << std::uppercase << std::setfill('0');
  for (const unsigned char c : bytes) text << (text.tellp() > 0 ? " " : "") << std::setw(2) << +c;
  return text.str();
}

class CheckDocs : public VemraTest {
 protected:
  void WriteExamples(const std::string& page) const;
};

// Each under the name that its fence gives.
void CheckDocs::WriteExamples(const std::string& page) const {
  const std::string fence = "```ini ";
  for (std::size_t at = 0; (at = page.find(fence, at)) != std::string::npos;) {
    const std::size_t name = at + fence.size();
    const std::size_t begin = page.find('\n', name);
    const std::size_t end = page.find("```\n", begin);
    ASSERT_NE(end, std::string::npos);
    std::string text = page.substr(begin + 1, end - begin - 1);
    ReplaceAll(text, "Z:\\srv", folder_.Path());
    Write(page.substr(name, begin - name), text);
    at = end;
  }
}

TEST_F(CheckDocs, ExamplesAreOneDefinitionWithoutFault) {
  for (const char* page :
       {"configuration.md", "fields.md", "tag-rules.md", "index-list.md", "look-and-feel.md"}) {
    WriteExamples(ReadPage(page));
  }
  for (const char* name : {"index", "tmp", "docs/guides", "pictures"}) {
    std::filesystem::create_directories(File(name));
  }
  for (const char* name : {"docs/read, first.html", "pictures/paper.gif", "pictures/splash.gif",
                           "pictures/desk.gif", "about.htm"}) {
    Write(name, "");
  }
  const std::string definition = File("manuals.cfg");
  EXPECT_EQ(RunVemra({"check", definition}).out, "");

  Write("docs/a.htm", "<title>Cats</title><p>One.</p>");
  Write("docs/guides/b.xhtml", "<html><body><h1>Dogs</h1>");
  ASSERT_EQ(RunVemra({"index", definition}).exitCode, kDone);
  EXPECT_THAT(RunVemra({"search", definition, "Title: cats OR dogs;"}).out, HasSubstr("2 texts"));
}

TEST_F(CheckDocs, EveryKeyHasARowWithItsDefault) {
  const std::pair<const char*, check::FileRule> pages[] = {
      {"configuration.md", check::kConfigurationFile},
      {"fields.md", check::kFieldsFile},
      {"tag-rules.md", check::kTagRulesFile},
      {"look-and-feel.md", check::kLookFile}};
  for (const auto& [name, rule] : pages) {
    const std::string page = ReadPage(name);
    for (const check::SectionRule& section : rule) {
      std::string title = '[' + std::string(section.name) + ']';
      ReplaceAll(title, "%d", "N");
      SCOPED_TRACE(std::string(name) + ' ' + title);
      const std::size_t place = page.rfind('`' + title + '`');
      ASSERT_NE(place, std::string::npos);
      for (const check::KeyRule& key : section.keys) {
        std::string row = "\n| `" + std::string(key.name) + "` |";
        ReplaceAll(row, "%d", "N");
        const std::size_t begin = page.find(row, place);
        ASSERT_NE(begin, std::string::npos) << row;
        const std::size_t end = page.find('\n', begin + 1);
        EXPECT_THAT(page.substr(begin, end - begin),
                    ::testing::EndsWith("| " + std::string(key.fallback) +
                                        (*key.fallback == '\0' ? "|" : " |")));
      }
    }
  }
}

TEST_F(CheckDocs, RecordsAreThoseOfTheLibrary) {
  const std::string page = ReadPage("file-dictionary.md");
  CTavoBitArray bits;
  bits.SetSize(13);
  for (const int bit : {0, 1, 8, 12}) bits.SetAt(bit, 1);
  {
    TavoFile file(folder_.Path("bits"), TavoFile::Access::kWrite,
                  TavoFile::Creation::kCreateTruncate);
    ASSERT_EQ(bits.Save(&file), 1);
  }
  EXPECT_THAT(page, HasSubstr('`' + Hex(Read("bits")) + '`'));

  CTavoFileDict dictionary;
  dictionary.Open(folder_.Path("x.fin"));
  ASSERT_EQ(dictionary.PutFileName(0, 1, "Z:\\srv\\a.html"), 1);
  dictionary.Close();
  const std::string record = Read("x.fin");
  ASSERT_EQ(record.size(), 263U);
  EXPECT_THAT(page, HasSubstr("263  " + Hex(record.substr(0, 1)) + ' '));
  EXPECT_THAT(page, HasSubstr("264  " + Hex(record.substr(1, 2)) + ' '));
  EXPECT_THAT(page, HasSubstr("266  " + Hex(record.substr(3, 13)) + ' '));
  EXPECT_EQ(record.substr(16), std::string(247, '\0'));
}

}  // namespace
}  // namespace vemra::commands
