#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// The loops of the bit arrays over their storage: bit i is bit i % 32 of word i / 32, which on a
// little-endian system is also bit i % 8 of byte i / 8.
namespace vemra::bitwords {

static_assert(std::endian::native == std::endian::little,
              "stored records hold the bits in little-endian order");

// target[i] = operation(target[i], source[i]). Blocks are copied out and back so that the compiler
// can use wide registers although the two may be the same.
template <class Operation>
void Combine(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes,
             Operation operation) {
  using Block = std::array<std::uint64_t, 4>;
  std::size_t at = 0;
  for (; at + sizeof(Block) <= bytes; at += sizeof(Block)) {
    Block a;
    Block b;
    std::memcpy(&a, target + at, sizeof a);
    std::memcpy(&b, source + at, sizeof b);
    for (std::size_t i = 0; i < a.size(); ++i) a[i] = operation(a[i], b[i]);
    std::memcpy(target + at, &a, sizeof a);
  }
  for (; at < bytes; ++at)
    target[at] = static_cast<std::uint8_t>(operation(target[at], source[at]));
}

inline constexpr auto kOr = [](std::uint64_t a, std::uint64_t b) { return a | b; };
inline constexpr auto kAnd = [](std::uint64_t a, std::uint64_t b) { return a & b; };
inline constexpr auto kAndNot = [](std::uint64_t a, std::uint64_t b) { return a & ~b; };

// The number of set bits.
std::int32_t Count(const std::uint8_t* bytes, std::size_t size);

// The lowest set bit >= from, or the highest one <= from, among the first bits bits; -1 for none.
// The storage is whole words.
inline std::int32_t FindUp(const std::uint32_t* words, std::int64_t bits, std::int64_t from) {
  if (from >= bits) return -1;
  std::int64_t index = from / 32;
  std::uint32_t word = words[index] & (~std::uint32_t{0} << (from % 32));
  while (word == 0) {
    if (++index * 32 >= bits) return -1;
    word = words[index];
  }
  const std::int64_t found = index * 32 + std::countr_zero(word);
  return found < bits ? static_cast<std::int32_t>(found) : -1;
}
std::int32_t FindDown(const std::uint32_t* words, std::int64_t bits, std::int64_t from);

// Copies count bits. The two ranges do not overlap; bits of the target outside its range stay.
void Copy(std::uint8_t* target, std::int64_t targetBit, const std::uint8_t* source,
          std::int64_t sourceBit, std::int64_t count);

}  // namespace vemra::bitwords
