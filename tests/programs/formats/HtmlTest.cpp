#include "programs/formats/Html.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Recording.h"
#include "Support/text/HighlightSearch.h"
#include "programs/formats/HitStyle.h"
#include "programs/formats/Purposes.h"

namespace vemra::test {
namespace {

using Runs = std::vector<std::string>;
using namespace std::string_literals;

struct Row {
  const char* label;
  std::string page;
  Runs runs;
};

void Check(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(RunsOf<HtmlParser>(row.page), row.runs) << row.label;
}

TEST(HtmlTest, CutsRunsAtTagsAndFields) {
  Check({
      {"empty", "", {}},
      {"inline elements", "a<b>b</b>c <i>d</i><tt>e</tt> H<sub>2</sub>O", {"0:abc de H2O"}},
      {"blocks", "<p>one<p>two<div>three</div>four", {"0:one", "/0:two", "/0:three", "/0:four"}},
      {"link inside a word", "a<a>b</a>c", {"0:a", "2:b", "0:c"}},
      {"line break", "one<br>two", {"0:one", "0:two"}},
      {"two line breaks", "one<br/> <BR>two", {"0:one", "/0:two"}},
      {"unknown element", "one<x-y>two</x-y>three", {"0:one", "0:two", "0:three"}},
      {"table", "<table><tr><td>a<td>b<tr><th>c</table>d", {"0:a", "/0:b", "/0:c", "/0:d"}},
      {"title", "<title>A &lt;b&gt; <b>c</title>d", {"1:A <b> <b>c", "/0:d"}},
      {"white space", " \n one \t\r\n <p>\n two\n three ", {"0:one", "/0:two three"}},
      {"white space between elements", "<b>one</b> <i>two</i>", {"0:one two"}},
      {"no-break space", "one&nbsp;&nbsp;two", {"0:one two"}},
      {"verbatim", "<pre>\n one\n  two </pre>x", {"0: one\n  two", "/0:x"}},
      {"lines of verbatim text", "<pre>a<img>\n<a>b</a>\n<a>c</a></pre>", {"0:a", "/2:b\nc"}},
      {"references", "&eacute; &euro;&#x263A;&copy&amp;lt;", {"0:\xE9 \x80\x81\xA9&lt;"}},
  });
}

TEST(HtmlTest, AttributesGiveTextWhereARuleNamesThem) {
  Check({
      {"author", "<META Content='Text &amp; Co' NAME=Author><p>x", {"3:Text & Co", "/0:x"}},
      {"other meta", "<meta name=generator content=y>x", {"0:x"}},
      {"meta without content", "<meta name=author>x", {"0:x"}},
      {"image", "see <img src=a alt='a\n cat' title=no> here", {"0:see", "4:a cat", "0:here"}},
      {"image without text", "see <img alt=''> here", {"0:see", "0:here"}},
      {"image in a link", "<a><img alt=x>y</a>", {"4:x", "2:y"}},
      {"link in a value", "<img alt='?a=1&copy=2&lt'>", {"4:?a=1&copy=2<"}},
      {"alt of another element", "<area alt=x>", {}},
  });
}

TEST(HtmlTest, SkipsWhatIsNoText) {
  Check({
      {"script", "a<script>if (a<b) x('</p>');</script>b", {"0:a", "0:b"}},
      {"script end in another case", "a<script></scriptx></SCRIPT >b", {"0:a", "0:b"}},
      {"unclosed script", "a<script>x", {"0:a"}},
      {"comment", "a<!-- <p> -- > -->b", {"0:ab"}},
      {"short comments", "a<!-->b<!--->c<!---->d<!--x--!>e", {"0:abcde"}},
      {"unclosed comment", "a<!-- b>c", {"0:a"}},
      {"document type", "<!DOCTYPE html>a", {"0:a"}},
      {"processing instruction", "<?php echo ?>a", {"0:a"}},
      {"data", "a<![CDATA[ <p>x</p> ]]>b", {"0:ab"}},
      {"unclosed data", "a<![CDATA[ <p>x", {"0:ax"}},
  });
}

TEST(HtmlTest, TakesAnyMarkup) {
  Check({
      {"less-than", "1 < 2 <3 a<", {"0:1 < 2 <3 a<"}},
      {"tag without its end", "one <b two", {"0:one <b two"}},
      {"tag run into the next", "<p<b>one</b>", {"0:one"}},
      {"empty tags", "a<>b</>c</ d>e", {"0:a<>bce"}},
      {"greater-than in a value", "<p title='a>b'>one", {"0:one"}},
      {"missing quote", "<p title=\"a>one</p>two", {"0:one", "/0:two"}},
      {"stray equals sign", "<p = x=>one<p ==>two", {"0:one", "/0:two"}},
      {"slashes", "<p/a/b//>one</p//>", {"0:one"}},
      {"unclosed title", "<title>one<p>two", {"1:one", "/0:two"}},
      {"unclosed link", "<p><a>one<p>two", {"2:one", "/0:two"}},
      {"link in a link", "<a>one<a>two</a>three", {"2:onetwo", "0:three"}},
      {"crossed", "<b><a>one</b>two</a>three", {"2:onetwo", "0:three"}},
      {"crossed block", "<a><p>one</a>two</p>three", {"2:one", "0:two", "/0:three"}},
      {"end tags alone", "</div>one</p>two</a></b></td>x", {"0:one", "/0:two", "/0:x"}},
      {"end tag from a cell", "<a><table><td></a>one</table>two", {"2:one", "/2:two"}},
      {"reference cut off", "one&#", {"0:one&#"}},
      {"control characters", "a\0b\x01<p\0>c&#0;&#7;"s, {"0:a b", "/0:c\x81"}},
      {"empty element", "<a name=x />one<p/>two", {"0:one", "/0:two"}},
  });
}

TEST(HtmlTest, KeepsTheElementPath) {
  const struct {
    const char* page;
    const char* path;
  } kRows[] = {
      {"x", ""},
      {"<HTML><Body><P Class=a>x", "<html><body><p>"},
      {"<ul><li>a<ul><li>b</ul>x", "<ul><li>"},
      {"<ul><li>a<ul></li>x", "<ul><li><ul>"},
      {"<ul><li>a<ul><li><p>b<li>x", "<ul><li><ul><li>"},
      {"<table><tr><td>a<td>b<tr><td>x", "<table><tr><td>"},
      {"<table><thead><tr><th>a<tbody><tr><td>x", "<table><tbody><tr><td>"},
      {"<table><tr><td><table><tr><td>a<tr></table>x", "<table><tr><td>"},
      {"<table><tr><td><p></table>x", ""},
      {"<select><option>a<option>x", "<select><option>"},
      {"<head><meta><link><body>x", "<body>"},
      {"<body><body>x", "<body>"},
      {"<p><b>a</p>x", ""},
      {"<h1>a<h2>x", "<h2>"},
      {"<b><i>a</b>x", "<i>"},
      {"<q1><q2>a</q1>x", ""},
      {"<q1>a</q2>x", "<q1>"},
      {"<p><object><p>a</object>x", "<p>"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.page);
    PageWrapper wrapper;
    wrapper.GetFileINI().GetField(1)->AddTag(0, row.path);
    Recorder<HtmlParser> recorder(wrapper);
    recorder.ParseDocument(row.page);
    EXPECT_THAT(recorder.runs, testing::Contains(testing::EndsWith("1:x")));
  }
}

TEST(HtmlTest, LaysOutText) {
  EXPECT_EQ(LayoutOf<HtmlParser>(
                "<title>The page</title><meta name=author content=us><h1>Head</h1>\n<p>One <b>two"
                "</b> <a>three</a>.<br>Four<img alt=cat><ul><li><p>a</li><li></li></ul><table><tr>"
                "<td>1<td>2<tr><td>3</table><pre>\nx\n  y\n</pre>end"),
            "Title: The page\nAuthor: us\n\nHead\n\nOne two three.\nFour[cat]\n\n* a\n\n1\t2\n3"
            "\n\nx\n  y\n\nend");
}

// The text of a field that is not to be shown leaves no trace.
TEST(HtmlTest, WritesNoLayoutForHiddenText) {
  PageWrapper wrapper;
  wrapper.GetFileINI().GetField(1)->AddFieldRule(fieldrule::kNoText);
  Recorder<HtmlParser> recorder(wrapper);
  recorder.ParseDocument("<title>Hidden</title><p>Shown");
  EXPECT_EQ(recorder.GetOutput()->GetOutputBuffer(), "Shown");
  EXPECT_EQ(recorder.runs.size(), 2U);
}

class MarkWord : public TavoHighlightSearch {
 public:
  void MarkWords(TavoSection& section, const CTavoFieldList& /*fields*/) override {
    for (TavoWord* word = section.GetFirstWord(); word; word = section.GetNextWord(word)) {
      if (word->GetStriptView() == "hit") word->Mark();
    }
  }
  void Finish() override {}
};

// The page that shows a document, with every word "hit" marked.
std::string PageOf(const std::string& document, std::uint32_t titleRules = 0) {
  PageWrapper wrapper;
  wrapper.GetFileINI().GetField(1)->AddFieldRule(titleRules);
  MarkWord search;
  TavoHighlightWrapper request(TavoHighlightWrapper::kWholeDocument, &search);
  const HtmlStyle style;
  HighlightParser<HtmlParser> parser(&wrapper, CodePage::Windows1252(), &request, style);
  EXPECT_EQ(parser.ParseDocument(document), 1);
  return parser.GetOutput()->GetOutputBuffer();
}

struct PageRow {
  const char* label;
  const char* document;
  const char* page;
};

void ExpectPages(const std::vector<PageRow>& rows) {
  for (const PageRow& row : rows) EXPECT_EQ(PageOf(row.document), row.page) << row.label;
}

TEST(HtmlTest, PageKeepsMarkupWellNested) {
  ExpectPages({
      {"blocks", "<html><body><h1 lang=de>a</h1><p>b</body></html>",
       "<h1 lang=\"de\">a</h1>\n<p>b</p>\n"},
      {"inline", "<p>a <b>b</b>c<br>d", "<p>a <b>b</b>c<br>d</p>\n"},
      {"list", "<ul><li>a<li>b</ul>c", "<ul><li>a</li>\n<li>b</li>\n</ul>\nc"},
      {"table", "<table><tr><td colspan=2>a<td>b</table>",
       "<table><tr><td colspan=\"2\">a</td><td>b</td></tr>\n</table>\n"},
      {"lines", "<pre>a\n <b>b</b>\n</pre>", "<pre>a\n <b>b</b></pre>\n"},
      {"crossed", "<b>a<i>b</b>c</i>", "<b>a<i>b</i></b><i>c</i>"},
      {"never closed", "<div><i>a", "<div><i>a</i></div>\n"},
      {"never opened", "a</div></p></b>b", "ab"},
      {"not closed before a block", "<b>a<p>b</b>c", "<b>a<p>b</p>\n</b><p>c</p>\n"},
      {"other blocks", "<form>a<fieldset>b</form>", "<div>a<div>b</div>\n</div>\n"},
      {"unknown", "<x-y>a</x-y><blink>b", "ab"},
      {"title and author", "<head><title>a &lt;</title><meta name=author content='<u>'></head>",
       "<div>Title: a &#60;</div>\n<div>Author: &#60;u&#62;</div>\n"},
      {"other fields", "<p>a <i><a href=b>c</a></i> d<img alt=e>",
       "<p>a <i><a href=\"b\">c</a></i> d[e]</p>\n"},
  });
  EXPECT_EQ(PageOf("<title>x <b>y</title><p>z", fieldrule::kNoText), "<div></div>\n<p>z</p>\n");
}

TEST(HtmlTest, PageHoldsNothingLive) {
  ExpectPages({
      {"handlers", "<p onclick=x() style='y' class=z id=1 TITLE=t>a",
       "<p id=\"doc-1\" title=\"t\">a</p>\n"},
      {"quotes", "<p title='\"><b>&quot;&#62;'>a",
       "<p title=\"&#34;&#62;&#60;b&#62;&#34;&#62;\">a</p>\n"},
      {"links", "<a href='http://x/?a&amp;b'>a</a><a href=HTTPS:x>b</a><a href=x:y>c</a>",
       "<a href=\"http://x/?a&#38;b\">a</a><a href=\"HTTPS:x\">b</a><span>c</span>"},
      {"scripts in links", "<a href=' java&#9;scr\nipt&#58;x'>a</a><a href=data:x>b</a>",
       "<span>a</span><span>b</span>"},
      {"relative links", "<a href='../x?y:z'>a</a><a href=#b name=c>b</a><a href=//x>c</a>",
       "<a href=\"../x?y:z\">a</a><a href=\"#doc-b\" id=\"doc-c\">b</a><a href=\"//x\">c</a>"},
      {"forms", "<form action=x><input name=a><button>b</button><textarea>c</textarea>",
       "<div>b<div>c</div>\n</div>\n"},
  });
}

TEST(HtmlTest, HitsStandWithinTheMarkup) {
  const auto hit = [](int n, const std::string& inner) {
    const auto link = [](int to, const char* arrow) {
      return "<a href=\"#hit" + std::to_string(to) + "\">&" + arrow + ";</a>";
    };
    return "<mark id=\"hit" + std::to_string(n) + "\">" + (n > 1 ? link(n - 1, "lsaquo") : "") +
           inner + link(n + 1, "rsaquo") + "</mark>";
  };
  EXPECT_EQ(PageOf("<p>a &lt;hit&gt; <b>hit</b>"),
            "<p>a &#60;" + hit(1, "hit") + "&#62; <b>" + hit(2, "hit") + "</b></p>\n");
  EXPECT_EQ(PageOf("h<b>i</b><i><u>t</i>s hit"),
            "h<b>i</b><i><u>t</u></i><u>s " + hit(1, "hit") + "</u>");
  EXPECT_EQ(PageOf("h<b>i</b>t"), hit(1, "h</mark><b><mark>i</mark></b><mark>t"));
  // Links do not stand within each other, be the link's text of the same fields or not.
  const std::string link = "<a href=\"x\">";
  EXPECT_EQ(PageOf("<a href=x>a hit b</a>"),
            link + "a </a>" + hit(1, link + "hit</a>") + link + " b</a>");
  EXPECT_EQ(PageOf("<a href=x><img alt=hit></a>"),
            link + "[</a>" + hit(1, link + "hit</a>") + link + "]</a>");
  EXPECT_EQ(PageOf("<title>a</title><b>hi<a href=x>t</a></b>"),
            "<div>Title: a</div>\n<b>hi" + link + "t</a></b>");
}

TEST(HtmlTest, StopsWhenTheSummaryHasEnough) {
  PageWrapper wrapper;
  TavoHighlightWrapper request(TavoHighlightWrapper::kFirstWords, nullptr, 2);
  const BracketStyle style;
  HighlightParser<HtmlParser> parser(&wrapper, CodePage::Windows1252(), &request, style);
  ASSERT_EQ(parser.ParseDocument("<p>one<p>two<p>three<p>four"), 1);
  EXPECT_EQ(request.GetSummary()->GetContents(), "one two");
  EXPECT_EQ(parser.DoStopParsing(), 1);
}

}  // namespace
}  // namespace vemra::test
