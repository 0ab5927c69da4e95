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
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(RunsOf<HtmlParser>(row.page), row.runs);
  }
}

TEST(HtmlTest, CutsRunsAtTagsAndFields) {
  Check({
      {"empty", "", {}},
      {"text alone", "just text", {"0:just text"}},
      {"inline elements", "a<b>b</b>c <i>d</i><tt>e</tt> H<sub>2</sub>O", {"0:abc de H2O"}},
      {"blocks", "<p>one<p>two<div>three</div>four", {"0:one", "/0:two", "/0:three", "/0:four"}},
      {"link", "see <a href=x>the <b>page</b></a> now", {"0:see", "2:the page", "0:now"}},
      {"link inside a word", "a<a>b</a>c", {"0:a", "2:b", "0:c"}},
      {"line break", "one<br>two", {"0:one", "0:two"}},
      {"two line breaks", "one<br/> <BR>two", {"0:one", "/0:two"}},
      {"unknown element", "one<x-y>two</x-y>three", {"0:one", "0:two", "0:three"}},
      {"table", "<table><tr><td>a<td>b<tr><th>c</table>d", {"0:a", "/0:b", "/0:c", "/0:d"}},
      {"title", "<title>A &lt;b&gt; <b>c</title>d", {"1:A <b> <b>c", "/0:d"}},
      {"title in a path of its own",
       "<html><head><title>T</title></head><body>B</body></html>",
       {"1:T", "/0:B"}},
      {"white space", " \n one \t\r\n <p>\n two\n three ", {"0:one", "/0:two three"}},
      {"white space between elements", "<b>one</b> <i>two</i>", {"0:one two"}},
      {"no-break space", "one&nbsp;&nbsp;two", {"0:one two"}},
      {"verbatim", "<pre>\n one\n  two </pre>x", {"0: one\n  two", "/0:x"}},
      {"lines of verbatim text", "<pre>a<img>\n<a>b</a>\n<a>c</a></pre>", {"0:a", "/2:b\nc"}},
      {"references",
       "caf&eacute; &euro;&#x263A;&notin;&copy&amp;lt;",
       {"0:caf\xE9 \x80\x81\x81\xA9&lt;"}},
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
      {"style", "<style>p { }</style>a", {"0:a"}},
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
      {"end tags alone",
       "</div>one</p>two</a></b></td></html>three",
       {"0:one", "/0:two", "/0:three"}},
      {"end tag from a cell", "<a><table><td></a>one</table>two", {"2:one", "/2:two"}},
      {"text after the page", "<html><body>one</body></html>two", {"0:one", "/0:two"}},
      {"reference cut off", "one&#", {"0:one&#"}},
      {"control characters", "a\0b\x01<p\0>c&#0;&#7;"s, {"0:a b", "/0:c\x81"}},
      {"empty element", "<a name=x />one<p/>two", {"0:one", "/0:two"}},
  });
}

// A wrapper that gives field 1 to one path, to learn which paths there are.
bool HasPath(const std::string& page, const std::string& path) {
  TavoTHWrapper wrapper("", 0);
  for (int i = 0; i < 2; ++i) {
    CTavoField field;
    field.SetName(std::to_string(i));
    field.SetFieldno(i);
    wrapper.GetFileINI().AddField(field);
  }
  wrapper.GetFileINI().GetField(1)->AddTag(0, path);
  Recorder<HtmlParser> recorder(wrapper);
  recorder.ParseDocument(page);
  return testing::Matches(testing::Contains(testing::EndsWith("1:x")))(recorder.runs);
}

TEST(HtmlTest, KeepsTheElementPath) {
  const struct {
    const char* page;
    const char* path;
  } kRows[] = {
      {"x", ""},
      {"<HTML><Body><P Class=a>x", "<html><body><p>"},
      {"<ul><li>a<li>x", "<ul><li>"},
      {"<ul><li>a<ul><li>b</ul>x", "<ul><li>"},
      {"<ul><li>a<ul><li><p>b<li>x", "<ul><li><ul><li>"},
      {"<dl><dt>a<dd>b<dt>x", "<dl><dt>"},
      {"<table><tr><td>a<td>b<tr><td>x", "<table><tr><td>"},
      {"<table><thead><tr><th>a<tbody><tr><td>x", "<table><tbody><tr><td>"},
      {"<table><tr><td><table><tr><td>a<tr></table>x", "<table><tr><td>"},
      {"<table><tr><td><p></table>x", ""},
      {"<select><option>a<option>x", "<select><option>"},
      {"<head><title>a</title><p>x", "<p>"},
      {"<head><meta><link><body>x", "<body>"},
      {"<body><body>x", "<body>"},
      {"<p><b>a</p>x", ""},
      {"<h1>a<h2>x", "<h2>"},
      {"<p>a<br>b<hr>x", ""},
      {"<b><i>a</b>x", "<i>"},
      {"<q1><q2>a</q1>x", ""},
      {"<q1>a</q2>x", "<q1>"},
      {"<p><object><p>a</object>x", "<p>"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.page);
    EXPECT_TRUE(HasPath(row.page, row.path));
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

TEST(HtmlTest, HighlightsThroughTheWholeDocument) {
  PageWrapper wrapper;
  MarkWord search;
  TavoHighlightWrapper request(TavoHighlightWrapper::kWholeDocument, &search);
  const HtmlStyle style;
  HighlightParser<HtmlParser> parser(&wrapper, CodePage::Windows1252(), &request, style);
  ASSERT_EQ(parser.ParseDocument("<p>a &lt;hit&gt; <a>hit</a>"), 1);
  EXPECT_EQ(parser.GetOutput()->GetOutputBuffer(),
            "a &#60;<mark id=\"hit1\">hit<a href=\"#hit2\">&rsaquo;</a></mark>&#62; "
            "<mark id=\"hit2\"><a href=\"#hit1\">&lsaquo;</a>hit"
            "<a href=\"#hit3\">&rsaquo;</a></mark>");
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
