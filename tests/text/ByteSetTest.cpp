#include "Support/text/ByteSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace vemra {
namespace {

std::string AllBytes() {
  std::string bytes;
  for (int c = 0; c < 256; ++c) bytes += static_cast<char>(c);
  return bytes;
}

TEST(ByteSet, EachByteAloneIsFoundAmongAll) {
  const std::string all = AllBytes();
  for (const char member : all) {
    const ByteSet set(std::string_view(&member, 1));
    for (const char c : all) EXPECT_EQ(set.Has(static_cast<unsigned char>(c)), c == member);
    EXPECT_EQ(set.FindIn(all, 0), all.find(member));
  }
}

TEST(ByteSet, BlocksAndTextsAreSearchedLikeByteByByte) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string members(random() % 20, '\0');
    for (char& c : members) c = static_cast<char>(random());
    const ByteSet set(members);
    std::string text(random() % 200, '\0');
    for (char& c : text) c = static_cast<char>(random());
    const std::size_t from = random() % (text.size() + 1);
    EXPECT_EQ(set.FindIn(text, from), std::min(text.find_first_of(members, from), text.size()));
    if (text.size() < ByteSet::kBlock) continue;
    EXPECT_EQ(set.FindInBlock(text.data()), set.FindInBlockPlainly(text.data()));
  }
}

}  // namespace
}  // namespace vemra
