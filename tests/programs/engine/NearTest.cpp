#include "programs/engine/Near.h"

#include <gtest/gtest.h>

namespace vemra::engine {
namespace {

// Comparing each place with each would take minutes. What is kept is held against every chain tried
// where texts are searched.
TEST(Near, BearsManyPlaces) {
  std::vector<NearPlace> places(300000);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const int word = static_cast<int>(i);
    places[i].span = {word, word, 0, 0};
  }
  std::vector<std::vector<NearPlace>> operands(3, places);
  KeepChains(operands,
             {{QueryRelation::Kind::kSentence, 0}, {QueryRelation::Kind::kWords, 1000000}});
  for (const auto& kept : operands) EXPECT_EQ(kept.size(), places.size());
}

}  // namespace
}  // namespace vemra::engine
