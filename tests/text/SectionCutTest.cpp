#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <string>
#include <thread>

#include "Support/text/Section.h"
#include "tests/text/PlainCut.h"

namespace vemra {
namespace {

using test::PlainCut;
using test::Same;
using test::SameItems;

const std::string kAlphabet = "a1 \n-.\"";

// Overrides CharType, with the same classes: cut item by item.
class GeneralSection : public TavoSection {
 public:
  using TavoSection::TavoSection;
  WordType CharType(unsigned char c) override { return TavoSection::CharType(c); }
};

// Hands over pieces of at most two characters, now simple, now compounds of one character a part.
class PiecesSection : public TavoSection {
 public:
  using TavoSection::TavoSection;
  std::optional<TavoWord> CreateWord(const char*& cursor, WordType& type) override {
    if (*cursor == '\0') return std::nullopt;
    TavoWord piece = CutOne(cursor);
    if (piece.GetType() != TavoWord::kSpace && *cursor != '\0' &&
        CharType(static_cast<unsigned char>(*cursor)) != TavoWord::kSpace) {
      piece.Merge(CutOne(cursor));
    }
    type = CharType(static_cast<unsigned char>(*cursor));
    return piece;
  }

 private:
  TavoWord CutOne(const char*& cursor) {
    // Owning their text, so that the section must point them at its contents.
    TavoWord one(std::string_view(cursor, 1), CharType(static_cast<unsigned char>(*cursor)));
    ++cursor;
    return one;
  }
};

// Calls check with every text of up to length characters.
template <typename Check>
void ForEveryText(std::size_t length, Check check) {
  std::string text;
  const auto extend = [&](const auto& self) -> void {
    check(text);
    if (text.size() == length) return;
    for (const char c : kAlphabet) {
      text.push_back(c);
      self(self);
      text.pop_back();
    }
  };
  extend(extend);
}

template <typename Section>
void CompareWithPlain(std::size_t length) {
  Section section;
  int wrong = 0;
  ForEveryText(length, [&](const std::string& text) {
    section.SetContents(text);
    section.ParseContents();
    if (Same(section, PlainCut(text))) return;
    if (++wrong <= 5) ADD_FAILURE() << "cut differently: " << testing::PrintToString(text);
  });
  EXPECT_EQ(wrong, 0);
}

TEST(SectionCut, ByTableEqualsTheRulesOnEveryShortText) {
  CompareWithPlain<TavoSection>(7);
}
TEST(SectionCut, ItemByItemEqualsTheRulesOnEveryShortText) {
  CompareWithPlain<GeneralSection>(5);
}
TEST(SectionCut, MergedPiecesEqualTheRulesOnEveryShortText) {
  CompareWithPlain<PiecesSection>(5);
}

TEST(SectionCut, EveryByteHasTheSameClassBothWays) {
  std::string text;
  for (int b = 1; b < 256; ++b) text += {static_cast<char>(b), 'x', ' '};
  TavoSection section(nullptr, text);
  GeneralSection general(nullptr, text);
  section.ParseContents();
  general.ParseContents();
  EXPECT_TRUE(Same(section, PlainCut(text)));
  EXPECT_TRUE(Same(general, PlainCut(text)));
}

std::string RandomText(std::mt19937& random, std::size_t size) {
  std::string text(size, ' ');
  for (char& c : text) c = kAlphabet[random() % kAlphabet.size()];
  return text;
}

TEST(SectionCut, LongRunsAndCompounds) {
  std::mt19937 random(1);
  const std::string mixed = RandomText(random, 20000);
  std::string compound;
  for (int i = 0; i < 500; ++i) compound += "a.";
  for (const std::string& text : {mixed, compound, std::string(1000, 'a'), std::string(1000, '\n'),
                                  std::string(1000, '.'), std::string(1000, '.') + "a"}) {
    SCOPED_TRACE(text.substr(0, 10));
    TavoSection section(nullptr, text);
    section.ParseContents();
    EXPECT_TRUE(Same(section, PlainCut(text)));
    PiecesSection pieces(nullptr, text);
    pieces.ParseContents();
    EXPECT_TRUE(Same(pieces, PlainCut(text)));
  }
}

TEST(SectionCut, TextsOfEveryLengthAroundTheScannersBlocks) {
  std::mt19937 random(2);
  for (std::size_t size = 1; size < 1100; ++size) {
    const std::string text = RandomText(random, size);
    TavoSection section(nullptr, text);
    section.ParseContents();
    EXPECT_TRUE(Same(section, PlainCut(text))) << text;
  }
}

// More threads than share the memory of sections that are gone; lengths that need more and less.
TEST(SectionCut, ThreadsCutTheirOwnSections) {
  constexpr unsigned kThreads = 20;
  TavoLangPack::GetDefault();  // made by one thread
  std::vector<std::thread> threads;
  std::atomic<int> wrong = 0;
  for (unsigned seed = 0; seed < kThreads; ++seed) {
    threads.emplace_back([&wrong, seed] {
      std::mt19937 random(seed);
      for (int round = 0; round < 40; ++round) {
        const std::string text = RandomText(random, random() % 500);
        TavoSection section(nullptr, text);
        const TavoSection copy(section);
        section.ParseContents();
        if (!Same(section, PlainCut(text))) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST(SectionCut, OneHugeCompoundTakesLinearTimeBothWays) {
  std::string text;
  for (int i = 0; i < 500000; ++i) text += "a.";
  TavoSection section(nullptr, text);
  GeneralSection general(nullptr, text);
  for (TavoSection* cut : {&section, static_cast<TavoSection*>(&general)}) {
    ASSERT_NE(cut->GetFirstWord(), nullptr);
    EXPECT_EQ(cut->GetItemsNumber(), 1);
    EXPECT_EQ(cut->GetFirstWord()->GetWordsNumber(), 1000000);
    EXPECT_EQ(cut->GetFirstWord()->GetLastWord()->GetEnd(), 999999);
  }
}

// Random edits on sections with marks; after each, the section equals a fresh one.
template <typename Section>
void EditAtRandom(unsigned seed, const std::string& letters) {
  std::mt19937 random(seed);
  const auto pick = [&random](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  };
  const auto randomText = [&] {
    std::string text;
    for (int n = pick(12); n > 0; --n) text += letters[random() % letters.size()];
    return text;
  };
  Section section(nullptr, randomText());
  section.ParseContents();
  for (int step = 0; step < 40; ++step) {
    const int edit = pick(8);
    if (edit == 0) {
      section.CutStart(pick(4));
    } else if (edit == 1) {
      section.CutEnd(pick(4));
    } else if (edit == 2) {
      section = Section(section);
    } else {
      Section other(nullptr, randomText());
      section.AddSection(other, pick(2));
    }
    ASSERT_TRUE(SameItems(section, PlainCut(section.GetContents())))
        << testing::PrintToString(section.GetContents());
    Section fresh(nullptr, section.GetContents());
    fresh.SetWordInSentencePosition(section.GetWordInSentencePosition());
    fresh.SetWordInParagraphPosition(section.GetWordInParagraphPosition());
    fresh.SetSentenceInParagraphPosition(section.GetSentenceInParagraphPosition());
    fresh.ParseContents();
    ASSERT_EQ(section.GetSentenceBreaks().GetEntries(), fresh.GetSentenceBreaks().GetEntries());
    ASSERT_EQ(section.GetParagraphBreaks().GetEntries(), fresh.GetParagraphBreaks().GetEntries());
    ASSERT_EQ(section.GetWordInSentenceAtEnd(), fresh.GetWordInSentenceAtEnd());
    ASSERT_EQ(section.GetWordInParagraphAtEnd(), fresh.GetWordInParagraphAtEnd());
    ASSERT_EQ(section.GetSentenceInParagraphAtEnd(), fresh.GetSentenceInParagraphAtEnd());
  }
}

TEST(SectionEdit, AfterAnyEditsASectionEqualsAFreshOne) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    EditAtRandom<TavoSection>(seed, kAlphabet + "bcd e");
    EditAtRandom<PiecesSection>(seed, kAlphabet + "bcd e");
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace vemra
