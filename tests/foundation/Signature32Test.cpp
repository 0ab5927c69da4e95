#include "Support/foundation/Signature32.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Support/foundation/FingerprintSteps.h"

namespace vemra {
namespace {

constexpr std::uint32_t kMask = 0x7FFFFFFF;

// The rule as it is told: one byte, shifted bit by bit, one bit of the mask.
std::uint32_t Plain(std::uint32_t h, const unsigned char* data, std::size_t length,
                    const unsigned char* mask = nullptr) {
  for (std::size_t i = 0; i < length; ++i) {
    if (mask != nullptr && (mask[i / 8] >> (i % 8) & 1) == 0) continue;
    for (int bit = 0; bit < 8; ++bit) {
      h <<= 1;
      if ((h & 0x80000000) != 0) h ^= 0x80000009;
    }
    h = (h ^ data[i]) & kMask;
  }
  return h;
}

class Signature32Test : public testing::Test {
 protected:
  std::vector<unsigned char> RandomBytes(std::size_t size) {
    std::vector<unsigned char> bytes(size);
    for (auto& byte : bytes) byte = static_cast<unsigned char>(random_());
    return bytes;
  }

  std::mt19937 random_{7};
};

TEST_F(Signature32Test, EveryWayAgreesWithTheRuleAtEveryLengthAndAlignment) {
  const std::vector<unsigned char> bytes = RandomBytes(320);
  const bool folds = CanFoldFingerprint();
  for (std::size_t length = 0; length <= 300; ++length) {
    for (std::size_t at = 0; at < 16; ++at) {
      const unsigned char* const data = bytes.data() + at;
      for (const std::uint32_t start : {std::uint32_t{0}, std::uint32_t(random_()) & kMask}) {
        const std::uint32_t expected = Plain(start, data, length);
        ASSERT_EQ(FingerprintByTables(start, data, length), expected) << length << " at " << at;
        if (folds && length >= kShortestFold) {
          ASSERT_EQ(FingerprintByFolding(start, data, length), expected) << length << " at " << at;
        }
        ASSERT_EQ(signature32::MaskedCRC(start, std::ptrdiff_t(length), nullptr, data), expected);
      }
    }
  }
}

TEST_F(Signature32Test, AnySplitGivesTheWhole) {
  const std::vector<unsigned char> bytes = RandomBytes(300);
  const auto whole = std::int32_t(Plain(0, bytes.data(), bytes.size()));
  EXPECT_EQ(signature32(bytes.data(), 300), whole);
  for (std::ptrdiff_t split = 0; split <= 300; ++split) {
    signature32 fed(bytes.data(), split);
    EXPECT_EQ(fed.Feed(bytes.data() + split, 300 - split), whole) << "split at " << split;
  }
}

TEST_F(Signature32Test, AMaskPicksBytesAndIsNotReadBeyondItsLast) {
  for (std::size_t length = 1; length <= 100; ++length) {
    // Buffers of exactly their size: a sanitized build sees any step too far.
    const std::vector<unsigned char> bytes = RandomBytes(length);
    std::vector<unsigned char> mask = RandomBytes((length + 7) / 8);
    for (const int kind : {0, 1, 2}) {
      if (kind > 0) std::fill(mask.begin(), mask.end(), kind == 1 ? 0xFF : 0);
      const std::uint32_t start = std::uint32_t(random_()) & kMask;
      ASSERT_EQ(signature32::MaskedCRC(start, std::ptrdiff_t(length), mask.data(), bytes.data()),
                Plain(start, bytes.data(), length, mask.data()))
          << length << " bytes, mask of kind " << kind;
    }
  }
}

TEST_F(Signature32Test, KnownValuesAndCorners) {
  const unsigned char ac = 0x05;
  const unsigned char text[] = {'a', 'b', 'c', 'd'};
  const std::pair<std::int32_t, std::int32_t> kRows[] = {
      {signature32("\1"), 1},
      {signature32("\x80") << "\1\1\1", 0x00010101 ^ 9},  // x^31 is x^3 + 1
      {signature32(), 0},
      {signature32(static_cast<const char*>(nullptr)), 0},
      {signature32(nullptr, 5), 0},
      {signature32(text, -1), 0},
      {signature32(-1), 0x7FFFFFFF},
      {std::int32_t(signature32::MaskedCRC(0, 4, &ac, text)), signature32("ac")},
      {std::int32_t(signature32::MaskedCRC(0x80000003, 1, nullptr, text)),
       std::int32_t(Plain(3, text, 1))},
      {std::int32_t(signature32::MaskedCRC(0x80000003, 0, &ac, text)), std::int32_t(0x80000003)},
      {signature32() << 'a', signature32("a")},
      {signature32() << '\xE4', 0xE4},
      {signature32() << std::int16_t{-2}, signature32("\xFE\xFF")},
      {signature32() << 0x64636261, signature32("abcd")},
  };
  for (const auto& row : kRows) EXPECT_EQ(row.first, row.second) << "row " << &row - kRows;
}

}  // namespace
}  // namespace vemra
