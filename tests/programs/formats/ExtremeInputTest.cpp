#include "programs/formats/Html.h"
#include "programs/formats/PlainText.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <sstream>

#include "fuzz/FormatFuzz.h"

namespace vemra::test {
namespace {

std::vector<std::string> PiecesOfMarkup() {
  std::istringstream words(
      "<p> </p> <b> </b> </a> <pre> </pre> <td> <tr> <table> </table> <li> <ul> <script> </script> "
      "<title> </title> <!-- --> <![CDATA[ ]]> < > \" ' = & &amp; &# &#x ; word / <br> </ <! <? "
      "<br <textarea> <object>");
  std::vector<std::string> pieces = {
      " ", "\n", "\r", "\f", "<img alt='", "<a href=\"x\">", "<meta name=author content="};
  pieces.insert(pieces.end(), std::istream_iterator<std::string>(words), {});
  return pieces;
}

// What is true of any bytes, of pieces of markup and any bytes in any order.
TEST(ExtremeInputTest, RandomBytesGiveCleanTextAndASafePage) {
  const std::vector<std::string> pieces = PiecesOfMarkup();
  std::mt19937 random(1);
  for (int i = 0; i < 4000; ++i) {
    std::string page;
    for (unsigned count = random() % 120; count > 0; --count) {
      const std::string byte(1, static_cast<char>(random() % 256));
      page += random() % 4 == 0 ? byte : pieces[random() % pieces.size()];
    }
    fuzz::RunFormat<HtmlParser>(page);
    fuzz::RunFormat<PlainTextParser>(page);
  }
}

// What is searched for again at every tag shows here as a test that runs into its time limit.
TEST(ExtremeInputTest, RepeatedMarkupGivesBoundedRuns) {
  for (const char* const piece :
       {"<a",       "<p title=\"", "<p title='", "<title>", "<textarea>", "<![CDATA[", "<!--",
        "<p",       "&",           "&#",         "</",      "<div>",      "<b>",       "<li>",
        "<x1><y2>", "</b>",        "<td>",       "<a>",     "<pre>\n",    "x ",        "xy",
        "<script>", "<img alt=x>", "\n",         "\n\n",    "\f"}) {
    SCOPED_TRACE(piece);
    std::string page;
    while (page.size() < 400000) page += piece;
    fuzz::RunFormat<HtmlParser>(page + ">");
    fuzz::RunFormat<PlainTextParser>(page);
  }
}

// Tags that cross, and links around hits, are written again and again.
TEST(ExtremeInputTest, PageIsABoundedMultipleOfItsDocument) {
  const std::string titled = " title=" + std::string(99, 'x') + '>';
  std::string nested;
  std::string crossing;
  for (const std::string name : {"abbr", "b", "big", "cite", "code", "em", "font", "i", "ins", "q",
                                 "s", "samp", "small", "sub", "sup", "u"}) {
    nested += '<' + name + titled;
    crossing += "</" + name + "><" + name + '>';
  }
  std::string crossed = nested;
  while (crossed.size() < 100000) crossed += crossing;
  std::string link = "<a href='" + std::string(299, 'x') + "'>" + nested;
  while (link.size() < 20000) link += "x ";
  for (const std::string& document : {crossed, link}) {
    PageWrapper wrapper;
    fuzz::MarkEverything search;
    TavoHighlightWrapper request(TavoHighlightWrapper::kWholeDocument, &search);
    const HtmlStyle style;
    HighlightParser<HtmlParser> parser(&wrapper, CodePage::Windows1252(), &request, style);
    ASSERT_EQ(parser.ParseDocument(document), 1);
    const std::string page = parser.GetOutput()->GetOutputBuffer();
    EXPECT_LE(page.size(), 600 * document.size());
    EXPECT_GT(page.size(), document.size());
  }
}

TEST(ExtremeInputTest, DeepNestingComesBackToItsPath) {
  std::string page = "deep<a>link</a>";
  for (int i = 0; i < 400; ++i) page = "<div>" + page + "</div>";
  const std::vector<std::string> runs = RunsOf<HtmlParser>(page + "<a>x</a><title>end</title>");
  EXPECT_EQ(runs, (std::vector<std::string>{"0:deeplink", "/2:x", "/1:end"}));
}

}  // namespace
}  // namespace vemra::test
