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
    std::string stream;
    for (unsigned i = random() % 6; i > 0; --i) {
      std::string word(random() % 5, '\0');
      // Half of them from the few bytes that mean something in a stream.
      for (char& c : word) c = static_cast<char>(random() % 2 == 0 ? random() % 5 : random() % 256);
      const bool samePosition = random() % 3 == 0;
      (samePosition ? AppendAtSamePosition : AppendWord)(stream, word);
      words.emplace_back(word, samePosition);
    }
    Words read;
    WordStreamReader reader(stream);
    while (reader.Next()) read.emplace_back(reader.Word(), reader.IsAtSamePosition());
    ASSERT_EQ(read, words);
    ASSERT_EQ(stream.find('\0'), std::string::npos);
  }
}

TEST(WordStream, ReadsAnyBytes) {
  std::mt19937 random(8);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes(random() % 12, '\0');
    for (char& c : bytes) c = static_cast<char>(random() % 5);
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
