#include "Support/text/ResultView.h"

#include <gtest/gtest.h>

#include "Support/text/LangPack.h"

namespace vemra {
namespace {

// Notes what changes: c(ontents), s(election), z(oom).
class NotingView : public CTavoResultView {
 public:
  using CTavoResultView::CTavoResultView;
  std::string changes;

 protected:
  void OnChange(Change change) override { changes += "csz"[change]; }
};

// Text with [hits] and <links to themselves>.
TavoViewDocument Document(const std::string& marked) {
  TavoViewDocument document;
  for (std::size_t i = 0; i < marked.size(); ++i) {
    switch (marked[i]) {
      case '[':
        document.BeginHit();
        break;
      case ']':
        document.EndHit();
        break;
      case '<':
        document.BeginLink(marked.substr(i + 1, marked.find('>', i) - i - 1));
        break;
      case '>':
        document.EndLink();
        break;
      default:
        document.AppendText({&marked[i], 1});
    }
  }
  return document;
}

TEST(ResultViewTest, JumpsBetweenHits) {
  NotingView view;
  EXPECT_EQ(view.GoToFirstHit() + view.GoToNextHit() + view.GoToPreviousHit() + view.GoToLastHit(),
            0);
  view.ReplaceContents(Document("a [b] [c][d] e"));
  EXPECT_EQ(view.GetCurrentHit(), -1);
  EXPECT_EQ(view.GoToPreviousHit(), 0);
  std::vector<int> path;
  while (view.GoToNextHit()) path.push_back(view.GetCurrentHit());
  EXPECT_EQ(path, (std::vector{0, 1, 2}));
  EXPECT_EQ(view.GetCurrentHit(), 2) << "a jump that fails leaves the selection";
  while (view.GoToPreviousHit()) path.push_back(view.GetCurrentHit());
  EXPECT_EQ(path, (std::vector{0, 1, 2, 1, 0}));
  view.Select({.start = 3, .length = 1});
  EXPECT_EQ(view.GetCurrentHit(), -1);
  EXPECT_EQ(view.GoToNextHit(), 1);
  EXPECT_EQ(view.GetCurrentHit(), 1);
  view.Select({.start = 1, .length = 4});
  EXPECT_EQ(view.GoToNextHit(), 1);
  EXPECT_EQ(view.GetCurrentHit(), 2) << "the next one behind all that is selected";
  EXPECT_EQ(view.GoToLastHit(), 1);
  EXPECT_EQ(view.GoToFirstHit(), 1);
  EXPECT_EQ(view.GoToHit(3), 0);
  EXPECT_EQ(view.changes, "c" + std::string(10, 's')) << "told once of each change";
}

TEST(ResultViewTest, SelectsWhatIsInTheText) {
  NotingView view;
  view.ReplaceContents(Document("abcdef"));
  const struct {
    TavoTextRange range;
    TavoTextRange selection;
  } kRows[] = {
      {{2, 2}, {2, 2}},  {{-3, 5}, {0, 2}}, {{4, 9}, {4, 2}},
      {{9, 9}, {6, 0}},  {{3, -2}, {3, 0}}, {{2147483647, 2147483647}, {6, 0}},
      {{-9, 3}, {0, 0}},
  };
  for (const auto& row : kRows) {
    view.Select(row.range);
    EXPECT_EQ(view.GetSelection(), row.selection) << row.range.start;
  }
  view.Select({.start = 1, .length = 2});
  view.ReplaceContents(Document("abcdef"));
  EXPECT_EQ(view.GetSelection(), TavoTextRange());
}

TEST(ResultViewTest, FindsAroundTheDocument) {
  CTavoResultView view;
  view.ReplaceContents(Document("Cat cat [C]AT dog"));
  const auto places = [&view](const char* text, int flags, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
      const int result = view.FindNext(text, flags);
      all += result == CTavoResultView::kNotFound ? "-" : std::to_string(view.GetSelection().start);
      if (result == CTavoResultView::kFoundWrapped) all += "w";
      all += ' ';
    }
    return all;
  };
  EXPECT_EQ(places("cat", CTavoResultView::kFindForward, 5), "0 4 8 0w 4 ");
  EXPECT_EQ(places("CAT", CTavoResultView::kFindBackward, 4), "0 8w 4 0 ");
  EXPECT_EQ(places("Cat", CTavoResultView::kFindMatchCase, 2), "0w 0w ");
  EXPECT_EQ(places("cat", CTavoResultView::kFindMatchCase | CTavoResultView::kFindBackward, 2),
            "4w 4w ");
  EXPECT_EQ(places("cow", 0, 1), "- ");
  EXPECT_EQ(view.GetSelection().start, 4) << "nothing found, nothing moved";
  EXPECT_EQ(places("", 0, 1), "- ");
  // What stands across the place that is searched from is found last.
  TavoTextRange found;
  EXPECT_EQ(view.Find("dog", 15, 0, found), CTavoResultView::kFoundWrapped);
  EXPECT_EQ(found, (TavoTextRange{.start = 12, .length = 3}));
}

TEST(ResultViewTest, ZoomsInStepsWithinLimits) {
  NotingView view;
  const struct {
    int set;
    int zoom;
    int in;   // after ZoomIn
    int out;  // after ZoomOut
  } kRows[] = {
      {100, 100, 110, 90}, {105, 105, 110, 100}, {25, 25, 33, 25},     {-1, 25, 33, 25},
      {26, 26, 33, 25},    {499, 499, 500, 400}, {500, 500, 500, 400}, {9999, 500, 500, 400},
  };
  EXPECT_EQ(view.GetZoom(), 100);
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.set);
    view.SetZoom(row.set);
    EXPECT_EQ(view.GetZoom(), row.zoom);
    EXPECT_EQ(view.ZoomIn(), row.in != row.zoom);
    EXPECT_EQ(view.GetZoom(), row.in);
    view.SetZoom(row.set);
    EXPECT_EQ(view.ZoomOut(), row.out != row.zoom);
    EXPECT_EQ(view.GetZoom(), row.out);
  }
  view.changes.clear();
  view.SetZoom(400);
  view.ReplaceContents(TavoViewDocument());
  EXPECT_EQ(view.changes, "c") << "400 it was";
  EXPECT_EQ(view.GetZoom(), 400);
}

// Follows the link: shows its target in place of the document, or closes the view.
class Follower : public TavoViewOwner {
 public:
  std::string pressed;
  std::unique_ptr<CTavoResultView> view = std::make_unique<CTavoResultView>(this);

  void OnLinkPressed(CTavoResultView& from, const std::string& target) override {
    if (target == "close") {
      view.reset();
    } else {
      from.ReplaceContents(Document("<close>"));
    }
    pressed = target;
  }
};

TEST(ResultViewTest, GivesPressedLinksToItsOwner) {
  Follower owner;
  owner.view->ReplaceContents(Document("see <this> page"));
  EXPECT_EQ(owner.view->Press(3), 0);
  EXPECT_EQ(owner.view->Press(8), 0);
  EXPECT_EQ(owner.view->Press(4), 1);
  EXPECT_EQ(owner.pressed, "this");
  EXPECT_EQ(owner.view->Press(4), 1);
  EXPECT_EQ(owner.pressed, "close");
  EXPECT_EQ(owner.view, nullptr);
  CTavoResultView alone;
  alone.ReplaceContents(Document("<x>"));
  EXPECT_EQ(alone.Press(0), 1);
}

TEST(ResultViewTest, MakesPages) {
  CTavoResultView view;
  view.ReplaceContents(Document("one two [three] four"));
  const TavoViewLayout pages = view.MakePages(9, 1);
  ASSERT_EQ(pages.GetPagesNumber(), 3);
  EXPECT_EQ(pages.GetPageText(1), "three\n");
  EXPECT_EQ(pages.GetPageAt(view.GetDocument().GetHit(0).start), 1);
}

}  // namespace
}  // namespace vemra
