#include "programs/engine/Near.h"

#include <gtest/gtest.h>

#include <random>

namespace vemra::engine {
namespace {

using Operands = std::vector<std::vector<NearPlace>>;
using Kind = QueryRelation::Kind;

bool AreRelated(const Span& a, const Span& b, const QueryRelation& relation) {
  if (a.firstWord > b.firstWord) return AreRelated(b, a, relation);
  if (b.firstWord <= a.lastWord) return false;  // they share a word
  switch (relation.kind) {
    case Kind::kSentence:
      return a.sentence == b.sentence && a.sentence != Span::kSeveral;
    case Kind::kParagraph:
      return a.paragraph == b.paragraph && a.paragraph != Span::kSeveral;
    default:
      return b.firstWord - a.lastWord <= relation.words;
  }
}

// Tries every chain.
void FollowChains(const Operands& operands, const std::vector<QueryRelation>& relations,
                  std::vector<std::size_t>& chain, std::vector<std::vector<bool>>& kept) {
  const std::size_t next = chain.size();
  if (next == operands.size()) {
    for (std::size_t i = 0; i < next; ++i) kept[i][chain[i]] = true;
    return;
  }
  for (std::size_t i = 0; i < operands[next].size(); ++i) {
    if (next > 0 && !AreRelated(operands[next - 1][chain.back()].span, operands[next][i].span,
                                relations[next - 1])) {
      continue;
    }
    chain.push_back(i);
    FollowChains(operands, relations, chain, kept);
    chain.pop_back();
  }
}

// A text of 30 words in sentences of 4 and paragraphs of 12.
NearPlace MakePlace(int first, int words) {
  const int last = first + words - 1;
  NearPlace place;
  place.span = {first, last, first / 4 == last / 4 ? first / 4 : Span::kSeveral,
                first / 12 == last / 12 ? first / 12 : Span::kSeveral};
  return place;
}

TEST(Near, KeepsWhatEveryChainTriedKeeps) {
  std::mt19937 random(3);
  int keptPlaces = 0;
  for (int round = 0; round < 6000; ++round) {
    Operands operands(random() % 3 + 2);
    std::vector<QueryRelation> relations(operands.size() - 1);
    for (QueryRelation& relation : relations) {
      relation = {static_cast<Kind>(random() % 3), static_cast<int>(random() % 4) + 1};
    }
    std::vector<std::vector<bool>> kept;
    for (std::vector<NearPlace>& places : operands) {
      for (unsigned i = random() % 6; i > 0; --i) {
        places.push_back(
            MakePlace(static_cast<int>(random() % 28), static_cast<int>(random() % 3) + 1));
      }
      kept.emplace_back(places.size());
    }
    std::vector<std::size_t> chain;
    FollowChains(operands, relations, chain, kept);
    Operands left = operands;
    KeepChains(left, relations);
    for (std::size_t i = 0; i < operands.size(); ++i) {
      std::vector<std::pair<int, int>> expected;
      for (std::size_t j = 0; j < operands[i].size(); ++j) {
        const Span& span = operands[i][j].span;
        if (kept[i][j]) expected.emplace_back(span.firstWord, span.lastWord);
      }
      std::vector<std::pair<int, int>> actual;
      for (const NearPlace& place : left[i]) {
        actual.emplace_back(place.span.firstWord, place.span.lastWord);
      }
      ASSERT_EQ(actual, expected) << "round " << round << ", operand " << i;
      keptPlaces += static_cast<int>(actual.size());
    }
  }
  EXPECT_GT(keptPlaces, 3000);
}

// Comparing each place with each would take minutes.
TEST(Near, BearsManyPlaces) {
  constexpr int kPlaces = 300000;
  Operands operands(3);
  for (std::vector<NearPlace>& places : operands) {
    for (int i = 0; i < kPlaces; ++i) {
      NearPlace place;
      place.span = {i, i, 0, 0};
      places.push_back(place);
    }
  }
  Operands one = operands;
  KeepChains(one, {{Kind::kSentence, 0}, {Kind::kWords, 1000000}});
  for (const auto& places : one) EXPECT_EQ(places.size(), std::size_t{kPlaces});
}

}  // namespace
}  // namespace vemra::engine
