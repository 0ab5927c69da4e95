#include "programs/formats/PlainText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Recording.h"
#include "Support/text/Input.h"
#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

using testing::ElementsAre;
using namespace std::string_literals;

TEST(PlainTextTest, ParagraphsEndAtBlankLinesAndFormFeeds) {
  EXPECT_THAT(RunsOf<PlainTextParser>("One\ntwo.\n\n  Three\r\n \t\r\nFour\fFive\n"),
              ElementsAre("0:One\ntwo.", "/0:  Three", "/0:Four", "/0:Five\n"));
  EXPECT_THAT(RunsOf<PlainTextParser>("a\r\rb\r\nc"), ElementsAre("0:a", "/0:b\r\nc"));
  EXPECT_TRUE(RunsOf<PlainTextParser>("\n\n").empty());
  EXPECT_TRUE(RunsOf<PlainTextParser>("").empty());
}

TEST(PlainTextTest, OutputKeepsEveryByteOfText) {
  const std::string text = "\n\nOne\ntwo.\n\n\n  Three\r\n\r\n\fFour\n";
  EXPECT_EQ(LayoutOf<PlainTextParser>(text), text);
}

TEST(PlainTextTest, LinesAreParagraphsOfATextWithoutBlankLines) {
  for (const auto& [text, last] : {std::pair("apple\nbear\ncat", 2),
                                   {"apple\nbear\ncat\n\n\n", 2},
                                   {"apple\nbear\n\ncat", 1}}) {
    PageWrapper wrapper;
    Recorder<PlainTextParser> recorder(wrapper);
    recorder.ParseDocument(text);
    EXPECT_EQ(recorder.GetParagraphNumber(), last) << text;
  }
}

TEST(PlainTextTest, LongTextComesInBoundedRunsCutAtWhiteSpace) {
  std::string text;
  while (text.size() < 5 * FormatParser::kMaxRun)
    text += "word" + std::to_string(text.size()) + ' ';
  text += std::string(2 * FormatParser::kMaxRun, 'x');
  PageWrapper wrapper;
  Recorder<PlainTextParser> recorder(wrapper);
  recorder.ParseDocument(text);
  std::string joined;
  for (const std::string& run : recorder.texts) {
    EXPECT_LE(run.size(), FormatParser::kMaxRun);
    EXPECT_TRUE(run.front() == 'w' || run.front() == 'x');
    joined += run;
  }
  EXPECT_EQ(joined, text);
}

TEST(PlainTextTest, FileWithNulsIsReadToItsEnd) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "a.txt", "a\0b\x01\xC3\xA9"s);
  PageWrapper wrapper;
  Recorder<PlainTextParser> recorder(wrapper);
  EXPECT_EQ(recorder.ParseFile(folder.Path("a.txt")), 1);
  EXPECT_THAT(recorder.runs, ElementsAre("0:a b \xE9"));
  EXPECT_EQ(recorder.ParseFile(folder.Path("missing.txt")), 0);
}

TEST(PlainTextTest, PushedTextComesFirst) {
  PageWrapper wrapper;
  Recorder<PlainTextParser> recorder(wrapper);
  TavoInput input;
  input.SetString("two");
  input.AddExpandedString("one ");
  EXPECT_EQ(recorder.Parse(&input), 1);
  EXPECT_THAT(recorder.runs, ElementsAre("0:one two"));
  EXPECT_TRUE(input.AtEOF());
}

}  // namespace
}  // namespace vemra::test
