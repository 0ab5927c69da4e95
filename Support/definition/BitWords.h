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

// target = target | source, & source, & ~source, ~source. The two may be the same.
void Or(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes);
void And(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes);
void AndNot(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes);
void Not(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes);

// The number of set bits.
std::int32_t Count(const std::uint8_t* bytes, std::size_t size);
// Writes their indices, counted from first on, and returns how many there are. Up to 2 places more
// are written than that.
std::size_t List(const std::uint8_t* bytes, std::size_t size, std::int32_t first,
                 std::int32_t* indices);

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
