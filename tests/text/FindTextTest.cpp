#include "Support/text/FindText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "Support/text/LangPack.h"

namespace vemra {
namespace {

std::string Folded(std::string text, const TavoLangPack* pack) {
  return pack != nullptr ? pack->ToIndex(text) : text;
}

int StartOf(const std::optional<TavoTextRange>& range) {
  return range ? range->start : -1;
}

// Both directions against the standard library's search.
void CheckPlaces(const std::string& text, const std::string& what, int from,
                 const TavoLangPack* pack) {
  SCOPED_TRACE(text + "/" + what + "/" + std::to_string(from));
  const std::string plain = Folded(text, pack);
  const std::size_t after = plain.find(Folded(what, pack), static_cast<std::size_t>(from));
  ASSERT_EQ(StartOf(FindForward(text, what, from, pack)), static_cast<int>(after));
  const int last = from - static_cast<int>(what.size());
  const std::size_t before = last < 0
                                 ? std::string::npos
                                 : plain.rfind(Folded(what, pack), static_cast<std::size_t>(last));
  ASSERT_EQ(StartOf(FindBackward(text, what, from, pack)), static_cast<int>(before));
}

TEST(FindTextTest, AgreesWithAPlainSearch) {
  const TavoLangPack* const packs[] = {nullptr, TavoLangPack::GetDefault()};
  std::mt19937 random(12);
  for (int round = 0; round < 20000; ++round) {
    std::string text(random() % 20, ' ');
    std::string what(1 + random() % 5, ' ');
    for (char& c : text) c = "abAB\xE9"[random() % 5];
    for (char& c : what) c = "abAB\xE9"[random() % 5];
    CheckPlaces(text, what, static_cast<int>(random() % (text.size() + 1)), packs[random() % 2]);
  }
}

// Everything that stands in any text of eleven bytes of two kinds: all ways to repeat and overlap.
TEST(FindTextTest, FindsWhatOverlapsItself) {
  for (unsigned bits = 0; bits < 1U << 11; ++bits) {
    std::string text;
    for (unsigned i = 0; i < 11; ++i) text += bits >> i & 1 ? 'a' : 'b';
    for (std::size_t start = 0; start < text.size(); ++start) {
      for (std::size_t length = 1; start + length <= text.size(); ++length) {
        CheckPlaces(text, text.substr(start, length), 0, nullptr);
        CheckPlaces(text, text.substr(start, length), 11, nullptr);
      }
    }
  }
}

TEST(FindTextTest, TakesAnyPositionAndAnyBytes) {
  const std::string text("a\0b\nA", 5);
  EXPECT_EQ(StartOf(FindForward(text, "a", -9, nullptr)), 0);
  EXPECT_EQ(StartOf(FindForward(text, "a", 99, nullptr)), -1);
  EXPECT_EQ(StartOf(FindBackward(text, "A", 99, nullptr)), 4);
  EXPECT_EQ(StartOf(FindBackward(text, "A", -9, nullptr)), -1);
  EXPECT_EQ(StartOf(FindForward(text, std::string("\0B\n", 3), 0, TavoLangPack::GetDefault())), 1);
  EXPECT_EQ(StartOf(FindForward(text, "", 0, nullptr)), -1);
  EXPECT_EQ(StartOf(FindForward("", "a", 0, nullptr)), -1);
  const auto range = FindBackward("one two", "two", 7, nullptr);
  ASSERT_TRUE(range);
  EXPECT_EQ(*range, (TavoTextRange{.start = 4, .length = 3}));
}

// Trying every start would compare 10^11 bytes.
TEST(FindTextTest, IsLinearInTheWorstCase) {
  const std::string text(1000000, 'a');
  EXPECT_EQ(StartOf(FindForward(text, std::string(100000, 'a') + "b", 0, nullptr)), -1);
  EXPECT_EQ(StartOf(FindBackward(text, "b" + std::string(100000, 'a'), 1000000, nullptr)), -1);
}

}  // namespace
}  // namespace vemra
