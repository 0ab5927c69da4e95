// How a parser fills a view.

#include "Support/text/ViewOutput.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "Support/text/HighlightWrapper.h"
#include "Support/text/Input.h"
#include "Support/text/ParseFile.h"
#include "Support/text/ResultView.h"
#include "Support/text/THWrapper.h"
#include "Support/text/ViewMarks.h"
#include "Support/text/ViewSection.h"
#include "tests/TempFolder.h"
#include "tests/text/HitSearch.h"

namespace vemra {
namespace {

// A small format. Commands stand between slashes: "*TARGET" and "*" start and end a link, a digit
// makes that field current and "-" none, "+" and a digit writes a field, "throw" throws and
// "refuse" fails; anything else is text.
class ViewParser : public TavoParseFile {
 public:
  explicit ViewParser(TavoTHWrapper* wrapper, TavoHighlightWrapper* highlight)
      : TavoParseFile(wrapper) {
    SetHighlightWrapper(highlight);
  }

 protected:
  std::unique_ptr<TavoOutput> CreateOutput() override { return std::make_unique<TavoViewOutput>(); }
  std::unique_ptr<TavoSection> CreateSection(const std::string& text) override {
    return std::make_unique<TavoViewSection>(GetOutput(), text, GetWrapper()->GetLangPack());
  }
  void HandleSection(TavoSection* section) override { HighlightSection(section, 1); }

  int ParseInput(TavoInput* input) override {
    OnStart();
    auto& output = static_cast<TavoViewOutput&>(*GetOutput());
    while (!input->AtEOF()) {
      std::string part = input->GetUpTo('/', 1);
      if (part == "throw") throw std::runtime_error(part);
      if (part == "refuse") return 0;
      if (part == "*") {
        output.EndLink();
      } else if (part[0] == '*') {
        output.BeginLink(part.substr(1));
      } else if (part[0] == '+') {
        output.WriteField(part[1] - '0', 1);
      } else if (part[0] == '-') {
        output.SetCurrentField(-1);
      } else if (part.size() == 1 && part[0] >= '0' && part[0] <= '9') {
        output.SetCurrentField(part[0] - '0');
      } else {
        OnContents(part);
      }
    }
    return OnEnd();
  }
};

class ViewWrapper : public TavoTHWrapper {
 public:
  explicit ViewWrapper(TavoHighlightSearch* search)
      : TavoTHWrapper("Z:\\no\\such.cfg", 0),
        highlight_(TavoHighlightWrapper::kWholeDocument, search) {}
  TavoParseFile* GetViewParser() override {
    return AddParserToHighlightList(std::make_unique<ViewParser>(this, &highlight_));
  }

 private:
  TavoHighlightWrapper highlight_;
};

// Hits in brackets, links as <target:text>.
std::string Marked(const TavoViewDocument& document) {
  std::string all;
  for (int i = 0; i <= document.GetLength(); ++i) {
    const int hitBefore = document.GetHitAt(i - 1);
    const int linkBefore = document.GetLinkAt(i - 1);
    const int hit = i < document.GetLength() ? document.GetHitAt(i) : -1;
    const int link = i < document.GetLength() ? document.GetLinkAt(i) : -1;
    if (hit != hitBefore && hitBefore >= 0) all += ']';
    if (link != linkBefore && linkBefore >= 0) all += '>';
    if (link != linkBefore && link >= 0) all += '<' + document.GetLink(link).target + ':';
    if (hit != hitBefore && hit >= 0) all += '[';
    if (i < document.GetLength()) all += document.GetText()[static_cast<std::size_t>(i)];
  }
  return all;
}

TEST(ViewOutputTest, KeepsTheOrderOfTextLinksAndHits) {
  const struct {
    const char* text;
    const char* shown;
  } kRows[] = {
      {"", ""},
      {"a hit, a \"hit\"", "a [hit], a \"hit\""},
      {"see /*x.htm/the hit page/*/ now", "see <x.htm:the [hit] page> now"},
      {"/*x/a/*y/b/*/c/*z/", "<x:a><y:b>c"},
      {"3/title /*t/hit/*/-/body hit /+3/ end", "body [hit] title <t:[hit]> end"},
      {"a hit/*x/never ended", "a [hit]<x:never ended>"},
  };
  for (const bool late : {false, true}) {
    test::HitSearch search;
    search.late = late;
    ViewWrapper wrapper(&search);
    for (const auto& row : kRows) {
      SCOPED_TRACE(row.text);
      test::TempFolder folder;
      test::WriteHostFile(folder.Host() / "doc", row.text);
      const std::unique_ptr<CTavoResultView> view(wrapper.GetView(folder.Path("doc")));
      ASSERT_NE(view, nullptr);
      EXPECT_EQ(Marked(view->GetDocument()), row.shown);
      EXPECT_EQ(wrapper.NoMoreOwners(), 1);
    }
  }
}

TEST(ViewOutputTest, LeavesAViewAloneWhenTheDocumentCannotBeShown) {
  test::HitSearch search;
  ViewWrapper wrapper(&search);
  test::TempFolder folder;
  CTavoResultView view;
  test::WriteHostFile(folder.Host() / "doc", "first");
  ASSERT_EQ(wrapper.ReplaceViewContents(&view, folder.Path("doc")), 1);
  EXPECT_EQ(wrapper.ReplaceViewContents(&view, folder.Path("missing")), 0);
  EXPECT_EQ(wrapper.GetView(folder.Path("missing")), nullptr);
  test::WriteHostFile(folder.Host() / "doc", "second/refuse");
  EXPECT_EQ(wrapper.ReplaceViewContents(&view, folder.Path("doc")), 0);
  test::WriteHostFile(folder.Host() / "doc", "third/throw");
  EXPECT_THROW(wrapper.ReplaceViewContents(&view, folder.Path("doc")), std::runtime_error);
  EXPECT_EQ(view.GetDocument().GetText(), "first");
  EXPECT_EQ(wrapper.NoMoreOwners(), 1);
  TavoTHWrapper none("Z:\\no\\such.cfg", 0);
  EXPECT_EQ(none.GetView(folder.Path("doc")), nullptr);
  EXPECT_EQ(wrapper.ReplaceViewContents(nullptr, folder.Path("doc")), 0);
}

TEST(ViewOutputTest, TakesTextOfAnyBytes) {
  const struct {
    std::string text;
    const char* shown;
  } kRows[] = {
      {std::string("a\0", 2), "a"},
      {std::string("a\0?b", 4), "ab"},
      {std::string("\0Lx", 3), ""},
      {viewmarks::MakeLinkStart(std::string("x\0y", 3)) + "a", "<x:a>"},
      {viewmarks::Make(viewmarks::kHitEnd) + "a" + viewmarks::Make(viewmarks::kHitStart) + "b",
       "a[b]"},
  };
  for (const auto& row : kRows) {
    TavoViewOutput output;
    output.Write(row.text);
    EXPECT_EQ(Marked(output.TakeDocument()), row.shown);
    EXPECT_EQ(output.IsEmpty(), 1);
  }
}

TEST(ViewOutputTest, MarksPartsOfCompounds) {
  TavoViewOutput output;
  auto section = std::make_unique<TavoViewSection>(&output, "\"well-known\", (it) x-ray");
  section->ParseContents();
  section->GetFirstWord()->Mark();
  section->GetWordAt(1)->GetFirstWord()->Mark();
  section->GetWordAt(2)->GetLastWord()->Mark();
  output.Write(section.release(), 1);
  EXPECT_EQ(output.GetHighlightCount(), 3);
  section = std::make_unique<TavoViewSection>(&output, " more");
  section->MarkAllWords();
  output.Write(section.release(), 1);
  EXPECT_EQ(output.GetHighlightCount(), 4);
  EXPECT_EQ(Marked(output.TakeDocument()), "\"[well-known]\", [(]it) x-[ray] [more]");

  // Unlocked behind the output's back: printed when the document is taken.
  TavoOutput other;
  auto* const waiting = new TavoViewSection(&other, "waiting");
  waiting->Lock();
  output.Write(waiting, 1);
  waiting->UnLock();
  EXPECT_EQ(output.TakeDocument().GetText(), "waiting");
  output.Write(new TavoViewSection(&output, "text"), 1);
  output.ResetOutput();
  EXPECT_EQ(output.TakeDocument().GetText(), "");
}

}  // namespace
}  // namespace vemra
