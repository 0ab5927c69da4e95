#include "Support/text/HighlightWrapper.h"

#include <gtest/gtest.h>

#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "tests/text/HitSearch.h"

namespace vemra {
namespace {

std::string Words(int from, int to) {
  std::string text;
  for (int i = from; i <= to; ++i) text += (i == from ? "w" : " w") + std::to_string(i);
  return text;
}

// One parsed section of count words of which one, when not negative, is marked.
std::unique_ptr<TavoSection> Section(const std::string& text, int marked = -1) {
  auto section = std::make_unique<TavoSection>(nullptr, text);
  section->ParseContents();
  if (marked >= 0) section->GetWordAt(marked)->Mark();
  return section;
}

TEST(HighlightWrapperTest, Truncates) {
  using Wrapper = TavoHighlightWrapper;
  const struct {
    const char* label;
    Wrapper::Mode mode;
    int maxWords;
    int words;
    int marked;
    const std::string kept;
  } kRows[] = {
      {"the hit stands in the middle", Wrapper::kAroundFirstHit, 10, 30, 12, Words(7, 16)},
      {"hit near the start", Wrapper::kAroundFirstHit, 10, 30, 4, Words(0, 9)},
      {"hit at half", Wrapper::kAroundFirstHit, 10, 30, 5, Words(0, 9)},
      {"hit just over half", Wrapper::kAroundFirstHit, 10, 30, 6, Words(1, 10)},
      {"hit is the last word", Wrapper::kAroundFirstHit, 10, 30, 29, Words(24, 29)},
      {"odd maximum", Wrapper::kAroundFirstHit, 5, 30, 12, Words(10, 14)},
      {"no hit", Wrapper::kAroundFirstHit, 10, 30, -1, Words(0, 29)},
      {"no words wanted", Wrapper::kAroundFirstHit, 0, 30, 12, ""},
      {"first words", Wrapper::kFirstWords, 10, 15, 12, Words(0, 9)},
      {"exactly enough", Wrapper::kFirstWords, 10, 10, -1, Words(0, 9)},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    Wrapper wrapper(row.mode, nullptr, row.maxWords);
    wrapper.AddSection(Section(Words(0, row.words - 1), row.marked).release(), 1);
    wrapper.TruncateSection();
    EXPECT_EQ(wrapper.GetSummary()->GetContents(), row.kept);
  }
}

TEST(HighlightWrapperTest, SaysWhenThereIsEnough) {
  TavoHighlightWrapper first(TavoHighlightWrapper::kFirstWords, nullptr, 4);
  EXPECT_EQ(first.AddSection(Section("a b").release(), 1), 0);
  EXPECT_EQ(first.AddSection(Section("c").release(), 1), 0);
  EXPECT_EQ(first.AddSection(Section("d").release(), 1), 1);
  EXPECT_EQ(first.IsEnough(), 1);
  EXPECT_EQ(first.GetSummary()->GetContents(), "a b c d");
  first.StopHighlight();
  EXPECT_EQ(first.IsEnough(), 0);

  TavoHighlightWrapper hit(TavoHighlightWrapper::kAroundFirstHit, nullptr, 4);
  EXPECT_EQ(hit.AddSection(Section("a b c d e").release(), 1), 0);
  EXPECT_EQ(hit.AddSection(Section("f g", 1).release(), 1), 1);
  hit.ClearSummary();
  EXPECT_EQ(hit.GetSummary()->GetFirstWord(), nullptr);
}

TEST(HighlightWrapperTest, QueuesUntilTheSearchHasFinished) {
  const struct {
    TavoHighlightWrapper::Mode mode;
    std::string summary;
  } kRows[] = {
      {TavoHighlightWrapper::kAroundFirstHit, "early before hit"},
      {TavoHighlightWrapper::kFirstWords, "early"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.mode);
    test::HitSearch search;
    search.late = true;
    TavoOutput output;
    TavoHighlightWrapper wrapper(row.mode, &search, 5);
    wrapper.AddSection(Section("early").release(), 1);
    for (const char* text : {"before", "hit", "after"}) {
      auto section = Section(text);
      section->SetOutput(&output);
      search.MarkWords(*section, CTavoFieldList());
      EXPECT_EQ(wrapper.AddSection(section.release(), 1), 0);
    }
    EXPECT_EQ(wrapper.AddSection(Section("unlocked but behind").release(), 1), 0);
    EXPECT_EQ(wrapper.GetSummary()->GetContents(), "early");
    search.Finish();
    wrapper.StopHighlight();
    EXPECT_EQ(wrapper.GetSummary()->GetContents(), row.summary);
    wrapper.AddSection(Section("next").release(), 1);
    EXPECT_EQ(wrapper.GetSummary()->GetContents(), row.summary + " next") << "nothing is queued";
  }
}

}  // namespace
}  // namespace vemra
