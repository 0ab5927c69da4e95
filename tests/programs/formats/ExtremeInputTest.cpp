#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "Recording.h"
#include "Support/text/HighlightSearch.h"
#include "programs/formats/Html.h"
#include "programs/formats/PlainText.h"
#include "programs/formats/Purposes.h"

namespace vemra::test {
namespace {

// Pieces of markup and any bytes, in any order.
std::string RandomPage(std::mt19937& random) {
  static const char* const kPieces[] = {"<p>",
                                        "</p>",
                                        "<b>",
                                        "</b>",
                                        "<a href=\"x\">",
                                        "</a>",
                                        "<pre>",
                                        "</pre>",
                                        "<td>",
                                        "<tr>",
                                        "<table>",
                                        "</table>",
                                        "<li>",
                                        "<ul>",
                                        "<script>",
                                        "</script>",
                                        "<title>",
                                        "</title>",
                                        "<!--",
                                        "-->",
                                        "<![CDATA[",
                                        "]]>",
                                        "<",
                                        ">",
                                        "\"",
                                        "'",
                                        "=",
                                        "&",
                                        "&amp;",
                                        "&#",
                                        "&#x",
                                        ";",
                                        "<img alt='",
                                        "<meta name=author content=",
                                        "word",
                                        " ",
                                        "\n",
                                        "\r",
                                        "\f",
                                        "/",
                                        "<br>",
                                        "</",
                                        "<!",
                                        "<?",
                                        "<br",
                                        "<textarea>",
                                        "<object>"};
  std::string page;
  for (int count = static_cast<int>(random() % 120); count > 0; --count) {
    if (random() % 4 == 0) {
      page += static_cast<char>(random() % 256);
    } else {
      page += kPieces[random() % std::size(kPieces)];
    }
  }
  return page;
}

template <typename Format>
void CheckRandomInput() {
  std::mt19937 random(1);
  PageWrapper wrapper;
  Recorder<Format> recorder(wrapper);
  for (int i = 0; i < 4000; ++i) {
    const std::string page = RandomPage(random);
    recorder.texts.clear();
    ASSERT_EQ(recorder.ParseDocument(page), 1);
    for (const std::string& text : recorder.texts) {
      ASSERT_FALSE(text.empty()) << testing::PrintToString(page);
      for (const char c : text) {
        const bool control = static_cast<unsigned char>(c) < ' ' || c == 127;
        ASSERT_TRUE(!control || c == '\t' || c == '\n' || c == '\f' || c == '\r')
            << testing::PrintToString(page);
      }
    }
  }
}

TEST(ExtremeInputTest, RandomBytesGiveCleanText) {
  CheckRandomInput<HtmlParser>();
  CheckRandomInput<PlainTextParser>();
}

std::size_t LongestOf(const std::vector<std::string>& texts) {
  std::size_t longest = 0;
  for (const std::string& text : texts) longest = std::max(longest, text.size());
  return longest;
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
    PageWrapper wrapper;
    Recorder<HtmlParser> html(wrapper);
    EXPECT_EQ(html.ParseDocument(page + ">"), 1);
    Recorder<PlainTextParser> text(wrapper);
    EXPECT_EQ(text.ParseDocument(page), 1);
    EXPECT_LE(LongestOf(html.texts), FormatParser::kMaxRun);
    EXPECT_LE(LongestOf(text.texts), FormatParser::kMaxRun);
  }
}

class MarkEveryWord : public TavoHighlightSearch {
 public:
  void MarkWords(TavoSection& section, const CTavoFieldList& /*fields*/) override {
    section.MarkAllWords();
  }
  void Finish() override {}
};

// Tags that cross, and links around hits, are written again and again.
TEST(ExtremeInputTest, PageIsABoundedMultipleOfItsDocument) {
  const std::vector<std::string> names = {"abbr", "b", "big", "cite", "code",  "em",  "font", "i",
                                          "ins",  "q", "s",   "samp", "small", "sub", "sup",  "u"};
  std::string nested;
  for (const std::string& name : names)
    nested += '<' + name + " title=" + std::string(99, 'x') + '>';
  std::string crossed = nested;
  while (crossed.size() < 100000) {
    for (const std::string& name : names) crossed += "</" + name + "><" + name + '>';
  }
  std::string link = "<a href='" + std::string(299, 'x') + "'>" + nested;
  while (link.size() < 20000) link += "x ";
  for (const std::string& document : {crossed, link}) {
    PageWrapper wrapper;
    MarkEveryWord search;
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
  std::string page;
  for (int i = 0; i < 400; ++i) page += "<div>";
  page += "deep<a>link</a>";
  for (int i = 0; i < 400; ++i) page += "</div>";
  const std::vector<std::string> runs = RunsOf<HtmlParser>(page + "<a>x</a><title>end</title>");
  EXPECT_EQ(runs, (std::vector<std::string>{"0:deeplink", "/2:x", "/1:end"}));
}

}  // namespace
}  // namespace vemra::test
