#include "Support/text/Section.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "Support/text/Output.h"

namespace vemra {
namespace {

// "w:Hello p:, s:_ c:[w:e p:. w:g p:.]"
std::string Describe(const TavoWord& word) {
  if (word.GetType() != TavoWord::kCompound) {
    std::string text(word.GetText());
    for (char& c : text) c = c == ' ' ? '_' : c == '\n' ? '$' : c;
    return std::string(1, "wps"[word.GetType()]) + ":" + text;
  }
  std::string parts;
  for (const TavoWord* part = word.GetFirstWord(); part; part = word.GetNextWord(part)) {
    parts += (parts.empty() ? "" : " ") + Describe(*part);
  }
  return "c:[" + parts + "]";
}

std::string Describe(TavoSection& section) {
  std::string all;
  for (TavoWord* item = section.GetFirstItem(); item; item = section.GetNextItem(item)) {
    all += (all.empty() ? "" : " ") + Describe(*item);
  }
  return all;
}

using Breaks = std::vector<unsigned>;

TEST(Section, CutsTextIntoItemsSentencesAndParagraphs) {
  struct Row {
    const char* text;
    const char* items;
    Breaks sentences;
    Breaks paragraphs;
  };
  const Row rows[] = {
      {"", "", {}, {}},
      {"Hello, world. Next", "w:Hello p:, s:_ w:world p:. s:_ w:Next", {2}, {}},
      {"e.g. this", "c:[w:e p:. w:g p:.] s:_ w:this", {1}, {}},
      {"a\nb", "w:a s:$ w:b", {1}, {1}},
      {"well-known", "c:[w:well p:- w:known]", {}, {}},
      {"\"so-called\" x", "c:[p:\" w:so p:- w:called p:\"] s:_ w:x", {}, {}},
      {"v1.2 (x", "c:[w:v1 p:. w:2] s:_ p:( w:x", {}, {}},
      {".net", "p:. w:net", {0}, {}},
      {"a. . b", "w:a p:. s:_ p:. s:_ w:b", {1, 1}, {}},
      {"a.\n\nb", "w:a p:. s:$$ w:b", {1, 1}, {1}},
      {"caf\xE9 au", "w:caf p:\xE9 s:_ w:au", {}, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    TavoSection section(nullptr, row.text);
    EXPECT_EQ(Describe(section), row.items);
    EXPECT_EQ(section.GetSentenceBreaks().GetEntries(), row.sentences);
    EXPECT_EQ(section.GetParagraphBreaks().GetEntries(), row.paragraphs);
  }
}

TEST(Section, NewLinesBreakOnlyWhenAsked) {
  TavoSection section(nullptr, "a\nb.");
  section.SetBreakOnNewLine(0);
  section.ParseContents();
  EXPECT_EQ(section.GetSentenceBreaks().GetEntries(), Breaks{2});
  EXPECT_TRUE(section.GetParagraphBreaks().IsEmpty());
  section.SetBreakOnNewLine(1);
  EXPECT_EQ(section.GetSentenceBreaks().GetEntries(), (Breaks{1, 2}));
}

TEST(Section, ANulEndsTheContents) {
  TavoSection section(nullptr, std::string("ab\0cd", 5));
  EXPECT_EQ(section.GetContents(), "ab");
  EXPECT_EQ(Describe(section), "w:ab");
}

TEST(Section, NumbersContinueFromTheCountsOnEntry) {
  //                            0     1    2       3      4
  TavoSection section(nullptr, "zero. one two\n\nthree. four");
  section.SetWordPosition(100);
  section.SetSentencePosition(10);
  section.SetParagraphPosition(5);
  section.SetWordInSentencePosition(7);
  section.SetWordInParagraphPosition(20);
  section.SetSentenceInParagraphPosition(2);
  struct Row {
    int sentence, paragraph, inSentence, inParagraph, sentenceInParagraph, starts, startsParagraph;
  };
  const Row rows[] = {{10, 5, 7, 20, 2, 0, 0},
                      {11, 5, 0, 21, 3, 1, 0},
                      {11, 5, 1, 22, 3, 0, 0},
                      {12, 6, 0, 0, 0, 1, 1},
                      {13, 6, 0, 1, 1, 1, 0}};
  // Twice: a parse leaves the counts on entry alone.
  for (int round = 0; round < 2; ++round) {
    section.ParseContents();
    TavoWord* word = section.GetFirstWord();
    for (const Row& row : rows) {
      ASSERT_NE(word, nullptr);
      SCOPED_TRACE(word->GetStriptWord());
      EXPECT_EQ(section.GetWordSentence(word), row.sentence);
      EXPECT_EQ(section.GetWordParagraph(word), row.paragraph);
      EXPECT_EQ(section.GetWordInSentence(word), row.inSentence);
      EXPECT_EQ(section.GetWordInParagraph(word), row.inParagraph);
      EXPECT_EQ(section.GetSentenceInParagraph(word), row.sentenceInParagraph);
      EXPECT_EQ(section.IsWordStartingSentence(word), row.starts);
      EXPECT_EQ(section.IsWordStartingParagraph(word), row.startsParagraph);
      word = section.GetNextWord(word);
    }
    EXPECT_EQ(word, nullptr);
  }
  EXPECT_EQ(section.GetLastWordNumber(), 104);
  EXPECT_EQ(section.GetLastSentenceNumber(), 13);
  EXPECT_EQ(section.GetLastParagraphNumber(), 6);
  EXPECT_EQ(section.GetWordsInLastSentence(), 2);
  EXPECT_EQ(section.GetWordsInLastParagraph(), 3);
  EXPECT_FALSE(section.IsLastWordBreaksSentence());

  TavoSection first(nullptr, "a b");
  ASSERT_NE(first.GetFirstWord(), nullptr);
  EXPECT_TRUE(first.IsWordStartingSentence(first.GetFirstWord()));
  EXPECT_TRUE(first.IsWordStartingParagraph(first.GetFirstWord()));
  EXPECT_EQ(first.GetWordsInLastSentence(), 2);
  TavoSection ended(nullptr, "a b.\n");
  ended.ParseContents();
  EXPECT_TRUE(ended.IsLastWordBreaksSentence());
  EXPECT_TRUE(ended.IsLastWordBreaksParagraph());
}

TEST(BreakList, CountsLikeALookThroughAllEntries) {
  std::mt19937 random(5);
  BreakList breaks;
  std::vector<unsigned> entries;
  for (unsigned word = 0; word < 400; ++word) {
    for (unsigned n = random() % 3; n > 1; --n) {
      breaks.Add(word);
      entries.push_back(word);
    }
  }
  for (int i = 0; i < 3000; ++i) {
    const int word = static_cast<int>(random() % 410) - 5;
    int count = 0;
    for (const unsigned entry : entries) count += static_cast<int>(entry) <= word;
    ASSERT_EQ(breaks.CountUpTo(word), count) << word;
    ASSERT_EQ(breaks.GetLastUpTo(word), count == 0 ? -1 : static_cast<int>(entries[count - 1]));
  }
}

TEST(Section, MakesTextWithinItsLimits) {
  struct Row {
    int maxWords, maxLength;
    const char* text;
    int taken;
  };
  const Row rows[] = {
      {-1, -1, "(one) two-three four.", 3},
      {2, -1, "(one) two-three", 2},
      {0, -1, "", 0},
      {-1, 21, "(one) two-three four", 3},  // the full stop would reach the limit
      {-1, 16, "(one) two-three", 2},
      {-1, 15, "(one)", 1},
      {-1, 5, "(one)", 1},
      {-1, 3, "(on", 1},
      {-1, 0, "", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.maxWords << " words, " << row.maxLength);
    TavoSection section(nullptr, " (one)  two-three\nfour. ");
    int taken = -1;
    EXPECT_EQ(section.MakeWordFromContents(row.maxWords, row.maxLength, &taken), row.text);
    EXPECT_EQ(taken, row.taken);
  }
}

TEST(Section, GivesTextBeforeAndAfterTheParse) {
  TavoSection section(nullptr, "one  two three four");
  EXPECT_EQ(section.GetTextContents(10), "one  two t");
  EXPECT_EQ(section.GetTextContents(-1), "one  two three four");
  section.ParseContents();
  EXPECT_EQ(section.GetTextContents(10), "one two");
  EXPECT_EQ(section.GetPartMarkContents(-3, 1), "one  two");
  EXPECT_EQ(section.GetPartMarkContents(2, 99), "three four");
  EXPECT_EQ(section.GetPartMarkContents(3, 2), "");
  TavoSection empty;
  EXPECT_EQ(empty.GetPartMarkContents(0, 0), "");
  EXPECT_EQ(empty.GetFirstWord(), nullptr);
}

TEST(Section, MakesExpressions) {
  TavoSection city(nullptr, "New  York");
  EXPECT_EQ(city.MakeExpression(), "new\xA0york");
  TavoSection single(nullptr, "Paris");
  EXPECT_EQ(single.MakeExpression(), "paris\xA0");
  TavoSection many(nullptr, "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17");
  int taken = 0;
  EXPECT_EQ(many.MakeExpression(&taken).substr(33),
            "15\xA0"
            "16");
  EXPECT_EQ(taken, 16);
}

TEST(Section, FindsMarkedWords) {
  TavoSection section(nullptr, "one a-b two");
  ASSERT_NE(section.GetFirstWord(), nullptr);
  EXPECT_EQ(section.GetFirstMarked(), -1);
  section.GetWordAt(1)->GetLastWord()->Mark();
  EXPECT_EQ(section.GetFirstMarked(), 1);
  EXPECT_FALSE(section.GetWordAt(1)->IsWholeMarked());
  const TavoSection copy(section);
  EXPECT_EQ(TavoSection(copy).GetFirstMarked(), 1);
  section.ParseContents();
  EXPECT_EQ(section.GetFirstMarked(), -1);
}

TEST(SectionEdit, KeepsWholeStretchesAndTheirNumbers) {
  struct Row {
    int start, end;
    const char* text;
  };
  const Row rows[] = {{0, 0, "Hello, (big) world. Next"},
                      {1, 0, "(big) world. Next"},
                      {0, 1, "Hello, (big) world."},
                      {2, 1, "world."},
                      {4, 0, ""},
                      {0, 9, ""},
                      {-1, -1, "Hello, (big) world. Next"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.start << " " << row.end);
    TavoSection section(nullptr, "Hello, (big) world. Next");
    section.SetWordPosition(50);
    section.ParseContents();
    section.GetWordAt(3)->Mark();
    section.CutStart(row.start);
    section.CutEnd(row.end);
    EXPECT_EQ(section.GetContents(), row.text);
    EXPECT_EQ(section.GetWordPosition(), 50 + std::max(row.start, 0));
    if (row.start == 1) {
      EXPECT_EQ(section.GetFirstMarked(), 2);
      EXPECT_EQ(section.GetWordInSentencePosition(), 1);
    }
  }
}

TEST(SectionEdit, JoinsAtTheSeamOrKeepsApart) {
  struct Row {
    const char* left;
    const char* right;
    int separate;
    const char* items;
  };
  const Row rows[] = {{"foo", "bar", 0, "w:foobar"},
                      {"foo", "bar", 1, "w:foo s:_ w:bar"},
                      {"foo ", "bar", 1, "w:foo s:_ w:bar"},
                      {"foo\n", " bar", 0, "w:foo s:$_ w:bar"},
                      {"e.", "g.", 0, "c:[w:e p:. w:g p:.]"},
                      {"a-b", "c", 0, "c:[w:a p:- w:bc]"},
                      {"a-b-", "c-d", 0, "c:[w:a p:- w:b p:- w:c p:- w:d]"},
                      {"", "x", 1, "w:x"},
                      {"x", "", 1, "w:x"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.left << "|" << row.right);
    TavoSection left(nullptr, row.left);
    TavoSection right(nullptr, row.right);
    left.AddSection(right, row.separate);
    EXPECT_EQ(Describe(left), row.items);
  }
  TavoSection self(nullptr, "a b");
  self.AddSection(self, 1);
  EXPECT_EQ(Describe(self), "w:a s:_ w:b s:_ w:a s:_ w:b");
}

TEST(SectionEdit, ManySectionsAreAddedInLinearTime) {
  // Quadratic work would take minutes.
  TavoSection all;
  for (int i = 0; i < 100000; ++i) {
    TavoSection one(nullptr, "well-known words.");
    all.AddSection(one, 1);
  }
  EXPECT_EQ(all.GetWordsNumber(), 200000);
  EXPECT_EQ(all.GetSentenceBreaks().GetCount(), 100000);
}

// Counts its own deletion and its frees.
class TrackedSection : public TavoSection {
 public:
  TrackedSection(TavoOutput* output, int& deleted)
      : TavoSection(output, "text"), deleted_(deleted) {}
  ~TrackedSection() override { ++deleted_; }

 private:
  int& deleted_;
};

TEST(Section, TheLastUnlockFreesIt) {
  int deleted = 0;
  auto* alone = new TrackedSection(nullptr, deleted);
  alone->Lock();
  alone->Lock();
  alone->UnLock();
  EXPECT_EQ(deleted, 0);
  alone->UnLock();
  EXPECT_EQ(deleted, 1);

  TavoOutput output;
  auto* queued = new TrackedSection(&output, deleted);
  queued->Lock();
  output.WriteSection(queued, 1);
  EXPECT_EQ(output.GetOutputBuffer(), "");
  queued->UnLock();
  EXPECT_EQ(output.GetOutputBuffer(), "text");
  EXPECT_EQ(deleted, 2);
}

// Leaves out punctuation when copied, and stops at a semicolon.
class PickySection : public TavoSection {
 public:
  using TavoSection::TavoSection;
  std::optional<TavoWord> CreateWord(const char*& cursor, WordType& type) override {
    return *cursor == ';' ? std::nullopt : TavoSection::CreateWord(cursor, type);
  }
  std::optional<TavoWord> CreateCopyWord(const TavoWord* word, std::string& text,
                                         int mode) override {
    if (word->GetType() == TavoWord::kPunctuation) return std::nullopt;
    return TavoSection::CreateCopyWord(word, text, mode);
  }
};

TEST(Section, TheStepsOfCuttingAndCopyingCanBeOverridden) {
  PickySection section(nullptr, "a, b-c;d");
  EXPECT_EQ(Describe(section), "w:a p:, s:_ c:[w:b p:- w:c]");
  TavoSection more(nullptr, "x-y");
  section.AddSection(more, 0);
  EXPECT_EQ(Describe(section), "w:a p:, s:_ c:[w:b p:- w:c] c:[w:x p:- w:y]");
  PickySection copy;
  copy = section;
  EXPECT_EQ(Describe(copy), "w:a s:_ c:[w:b p:- w:c] c:[w:x p:- w:y]");
  EXPECT_EQ(copy.GetContents(), "a b-cx-y");
}

}  // namespace
}  // namespace vemra
