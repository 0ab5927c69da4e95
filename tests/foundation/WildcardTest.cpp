#include "Support/foundation/Wildcard.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "Support/foundation/WildcardMatcher.h"

namespace vemra {
namespace {

// The rule told step by step, which takes exponential time.
bool MatchPlainly(const char* pattern, const char* name, std::size_t limit) {
  bool starPends = false;
  for (; *pattern != '\0'; ++pattern) {
    if (*pattern == '*') {
      starPends = true;
    } else if (*pattern == '?') {
      if (*name++ == '\0') return false;
    } else if (!starPends) {
      if (*name++ != *pattern) return false;
    } else {
      for (std::size_t k = 0; k <= limit && name[k] != '\0'; ++k) {
        if (name[k] == *pattern && MatchPlainly(pattern + 1, name + k + 1, limit)) return true;
      }
      return false;
    }
  }
  const std::string rest = name;
  return starPends ? rest.size() <= limit : rest.empty();
}

std::vector<std::string> AllTexts(const std::string& alphabet, std::size_t maxLength) {
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; i < texts.size() && texts[i].size() < maxLength; ++i) {
    for (const char c : alphabet) texts.push_back(texts[i] + c);
  }
  return texts;
}

TEST(WildcardTest, AgreesWithTheRuleOnAllShortTexts) {
  const std::vector<std::string> names = AllTexts("ab", 6);
  for (const std::string& pattern : AllTexts("ab?*", 5)) {
    for (const std::string& name : names) {
      for (const std::size_t limit : {0, 1, 2, 1000}) {
        ASSERT_EQ(MatchWildcardWithin(pattern, name, limit),
                  MatchPlainly(pattern.c_str(), name.c_str(), limit))
            << pattern << " on " << name << " within " << limit;
      }
    }
  }
}

TEST(WildcardTest, AgreesWithTheRuleOnLongNames) {
  std::mt19937 random(20);
  int matches = 0;
  for (int round = 0; round < 300; ++round) {
    std::string pattern;
    std::string name;
    for (int piece = 0; piece < 3; ++piece) {
      const std::string word(1, static_cast<char>('a' + random() % 3));
      pattern += "*" + word + (random() % 2 == 0 ? "?" : "");
      name += std::string(990 + random() % 15, 'x') + word + (random() % 4 == 0 ? "" : "y");
    }
    const bool expected = MatchPlainly(pattern.c_str(), name.c_str(), 1000);
    matches += expected ? 1 : 0;
    ASSERT_EQ(MatchWildcard(pattern, name), expected ? 1 : 0) << pattern << " on " << name;
  }
  EXPECT_GT(matches, 10);
  EXPECT_LT(matches, 290);
}

TEST(WildcardTest, KnowsItsCorners) {
  const std::string longest(1000, 'x');
  EXPECT_TRUE(MatchWildcard("*", longest));
  EXPECT_FALSE(MatchWildcard("**", longest + "x"));
  EXPECT_TRUE(MatchWildcard("*.txt", longest + ".txt"));
  EXPECT_FALSE(MatchWildcard("*.txt", "x" + longest + ".txt"));
  EXPECT_TRUE(MatchWildcard("a\xFF?", "a\xFF\x80"));
  EXPECT_FALSE(MatchWildcard("A", "a"));
}

// The plain rule would not come back in a lifetime.
TEST(WildcardTest, TakesPolynomialTime) {
  std::string manyStars;
  for (int i = 0; i < 100; ++i) manyStars += "*a";
  EXPECT_FALSE(MatchWildcard(manyStars + "*b", std::string(10000, 'a')));
  EXPECT_FALSE(MatchWildcard(manyStars + "*b", std::string(900, 'a')));
  EXPECT_FALSE(MatchWildcard("*" + std::string(100, 'a') + "b", std::string(10000, 'a')));
}

}  // namespace
}  // namespace vemra
