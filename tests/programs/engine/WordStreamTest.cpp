#include "programs/engine/WordStream.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

namespace vemra::engine {
namespace {

using Words = std::vector<std::pair<std::string, bool>>;  // the word, whether at the same position

TEST(WordStream, GivesAnyWordsBack) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    Words words;
    WordStream stream;
    for (unsigned i = random() % 6; i > 0; --i) {
      // Lengths of one, two and three digits.
      std::string word(random() % (random() % 20 == 0 ? WordStream::kMaxWord : 200), '\0');
      for (char& c : word) c = static_cast<char>(random() % 255 + 1);
      const bool samePosition = random() % 3 == 0;
      samePosition ? stream.AddAtSamePosition(word.c_str()) : stream.Add(word.c_str());
      words.emplace_back(word, samePosition);
    }
    Words read;
    WordStreamReader reader(stream.Get());  // as far as the first NUL
    while (reader.Next()) read.emplace_back(reader.Word(), reader.IsAtSamePosition());
    ASSERT_EQ(read, words);
  }
}

TEST(WordStream, CutsAWordAtItsMost) {
  const std::string most(WordStream::kMaxWord, 'a');
  WordStream stream;
  for (const std::string& word : {most, most + 'b'}) {
    stream.Clear();
    stream.Add(word.c_str());
    WordStreamReader reader(stream.Get());
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Word(), most);
    EXPECT_FALSE(reader.Next());
  }
}

TEST(WordStream, ReadsAnyBytes) {
  std::mt19937 random(8);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes(random() % 12, '\0');
    for (char& c : bytes) c = static_cast<char>(random() % 5 + random() % 2 * 128);
    WordStreamReader reader(bytes);
    std::size_t end = 0;
    while (reader.Next()) {
      ASSERT_GE(reader.Begin(), end);
      ASSERT_LE(reader.End(), bytes.size());
      end = reader.End();
    }
  }
}

}  // namespace
}  // namespace vemra::engine
