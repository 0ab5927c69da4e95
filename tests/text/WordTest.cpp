#include "Support/text/Word.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "Support/text/Section.h"

namespace vemra {
namespace {

TEST(Word, StripsPunctuationAroundACompound) {
  const std::pair<const char*, const char*> rows[] = {
      {"plain", "plain"}, {"\"so-called\"", "so-called"},
      {"e.g.", "e.g"},    {"don't", "don't"},
      {"--", "--"},       {"(a)", "a"},
  };
  for (const auto& [text, stript] : rows) {
    SCOPED_TRACE(text);
    TavoSection section(nullptr, text);
    EXPECT_EQ(section.GetFirstItem()->GetStriptWord(), stript);
  }
}

TEST(Word, ACopyOutlivesItsSection) {
  TavoWord copy;
  {
    TavoSection section(nullptr, "x \"well-known\"");
    section.GetFirstWord();
    section.GetWordAt(1)->GetFirstWord()->Mark();
    copy = *section.GetWordAt(1);
  }
  TavoWord again(copy);
  copy.RemoveWords();
  EXPECT_EQ(copy.GetStriptWord(), "");
  TavoWord moved(std::move(again));
  EXPECT_EQ(moved.GetText(), "\"well-known\"");
  EXPECT_EQ(moved.GetStriptView(), "well-known");
  EXPECT_TRUE(moved.IsMarked());
  EXPECT_EQ(moved.GetStart(), 2);
  EXPECT_EQ(moved.GetNumber(), 1);
  EXPECT_EQ(moved.GetLastWord()->GetStart(), 13);
}

TEST(Word, GivingUpPartsLeavesTheOtherCompoundsAlone) {
  TavoSection section(nullptr, "a-b c-d e-f");
  section.GetFirstWord()->RemoveWords();
  TavoSection more(nullptr, "g-h");
  section.AddSection(more, 1);
  section.CutEnd(1);
  EXPECT_EQ(section.GetWordAt(0)->GetWordsNumber(), 0);
  EXPECT_EQ(section.GetWordAt(1)->GetLastWord()->GetText(), "d");
  EXPECT_EQ(section.GetWordAt(2)->GetLastWord()->GetText(), "f");
}

TEST(Word, MergedWordsThatLieApartOwnTheirText) {
  TavoWord word("well", TavoWord::kWord);
  word.Mark();
  word.Merge(TavoWord("-", TavoWord::kPunctuation));
  word.Merge(TavoWord("-", TavoWord::kPunctuation));
  word.Merge(TavoWord("known", TavoWord::kWord));
  EXPECT_EQ(word.GetText(), "well--known");
  ASSERT_EQ(word.GetWordsNumber(), 3);
  EXPECT_EQ(word.GetFirstWord()->GetText(), "well");
  EXPECT_EQ(word.GetNextWord(word.GetFirstWord())->GetText(), "--");
  EXPECT_EQ(word.GetLastWord()->GetNumber(), 2);
  EXPECT_FALSE(word.IsWholeMarked());
  EXPECT_TRUE(word.IsMarked());
}

}  // namespace
}  // namespace vemra
