#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// The loops of the bit arrays over their storage: bit i is bit i % 32 of word i / 32, which on a
// little-endian system is also bit i % 8 of byte i / 8.
namespace vemra::bitwords {

static_assert(std::endian::native == std::endian::little,
              "stored records hold the bits in little-endian order");

// 16 bytes that the compiler keeps in one register of the processor.
using Block [[gnu::vector_size(16)]] = std::uint64_t;

// target[i] = operation(target[i], source[i]); the two may be the same. The compiler does not find
// the wide registers by itself, since it must allow for any overlap.
template <class Operation>
void Combine(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes,
             Operation operation) {
  std::size_t at = 0;
  for (; at + sizeof(Block) <= bytes; at += sizeof(Block)) {
    Block a;
    Block b;
    std::memcpy(&a, target + at, sizeof a);
    std::memcpy(&b, source + at, sizeof b);
    a = operation(a, b);
    std::memcpy(target + at, &a, sizeof a);
  }
  for (; at < bytes; ++at)
    target[at] = static_cast<std::uint8_t>(operation(target[at], source[at]));
}

inline constexpr auto kOr = [](auto a, auto b) { return a | b; };
inline constexpr auto kAnd = [](auto a, auto b) { return a & b; };
inline constexpr auto kAndNot = [](auto a, auto b) { return a & ~b; };

// The number of set bits.
std::int32_t Count(const std::uint8_t* bytes, std::size_t size);

// The lowest set bit >= from, or the highest one <= from, among the first bits bits; -1 for none.
// The storage is whole words.
inline std::int32_t FindUp(const std::uint32_t* words, std::uint32_t bits, std::uint32_t from) {
  if (from >= bits) return -1;
  std::uint32_t index = from / 32;
  std::uint32_t word = words[index] & (~std::uint32_t{0} << (from % 32));
  while (word == 0) {
    if (++index >= (bits + 31) / 32) return -1;
    word = words[index];
  }
  const std::uint32_t found = index * 32 + static_cast<std::uint32_t>(std::countr_zero(word));
  return found < bits ? static_cast<std::int32_t>(found) : -1;
}
std::int32_t FindDown(const std::uint32_t* words, std::int64_t bits, std::int64_t from);

// Copies count bits. The two ranges do not overlap; bits of the target outside its range stay.
void Copy(std::uint8_t* target, std::int64_t targetBit, const std::uint8_t* source,
          std::int64_t sourceBit, std::int64_t count);

}  // namespace vemra::bitwords
