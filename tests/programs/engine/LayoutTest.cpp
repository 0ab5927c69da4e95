#include "programs/engine/Layout.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace vemra::engine {
namespace {

struct Word {
  int fieldno;
  int position;
  int sentence;
  int paragraph;
};

// Writes a random text and returns its words in document order.
std::vector<Word> WriteText(std::mt19937& random, LayoutWriter& writer) {
  std::vector<Word> words;
  std::map<int, int> counts;
  int sentence = 0;
  int paragraph = 0;
  int fieldno = 0;
  for (unsigned i = random() % 60; i > 0; --i) {
    if (random() % 4 == 0) fieldno = "\0\1\7\174"[random() % 4];
    if (random() % 5 == 0) {
      writer.StartSentence();
      ++sentence;
    } else if (random() % 9 == 0) {
      writer.StartParagraph();
      writer.StartSentence();  // a paragraph begins one anyway
      ++sentence;
      ++paragraph;
    }
    for (unsigned n = random() % 40 == 0 ? 3000 : 1; n > 0; --n) {
      writer.AddWord(fieldno);
      words.push_back({fieldno, counts[fieldno]++, sentence, paragraph});
    }
  }
  return words;
}

TEST(Layout, LeadsFromFieldsToTheDocument) {
  std::mt19937 random(5);
  LayoutWriter writer;
  TextLayout layout;
  for (int round = 0; round < 300; ++round) {
    writer.Clear();
    const std::vector<Word> words = WriteText(random, writer);
    ASSERT_TRUE(layout.Read(writer.GetBytes()));
    Span span;
    for (std::size_t first = 0; first < words.size(); ++first) {
      // To some later word of the same field.
      std::size_t last = std::min(words.size() - 1, first + random() % 8);
      while (words[last].fieldno != words[first].fieldno) --last;
      const Word& from = words[first];
      const Word& to = words[last];
      ASSERT_TRUE(layout.Find(from.fieldno, from.position, to.position - from.position + 1, span));
      ASSERT_EQ(span.firstWord, static_cast<int>(first));
      ASSERT_EQ(span.lastWord, static_cast<int>(last));
      const auto common = [](int a, int b) { return a == b ? a : Span::kSeveral; };
      ASSERT_EQ(span.sentence, common(from.sentence, to.sentence));
      ASSERT_EQ(span.paragraph, common(from.paragraph, to.paragraph));
    }
    if (!words.empty()) {
      ASSERT_FALSE(layout.Find(words.back().fieldno, words.back().position, 2, span));
    }
    ASSERT_FALSE(layout.Find(0, -1, 1, span));
    ASSERT_FALSE(layout.Find(99, 0, 1, span));
  }
}

TEST(Layout, RefusesOtherBytes) {
  const std::string whole("\x0e\x05\x0a", 3);  // a word of field 5, then another one
  TextLayout layout;
  EXPECT_TRUE(layout.Read(whole));
  const std::string bad[] = {
      whole.substr(0, 1),    std::string("\x06\x05", 2), "\x0e\x7d", std::string(1, '\0'), "\x88",
      std::string(8, '\xff')};
  for (const std::string& bytes : bad)
    EXPECT_FALSE(layout.Read(bytes)) << testing::PrintToString(bytes);
}

// Segments cost next to nothing: a byte for each of up to 15 words.
TEST(Layout, IsSmall) {
  LayoutWriter writer;
  for (int sentence = 0; sentence < 100; ++sentence) {
    writer.StartSentence();
    for (int i = 0; i < 15; ++i) writer.AddWord(0);
  }
  EXPECT_EQ(writer.GetBytes().size(), 100U);
}

}  // namespace
}  // namespace vemra::engine
