#include "Support/definition/BitWords.h"

#include <algorithm>

namespace vemra::bitwords {
namespace {

// Most loops are compiled twice on x86: as every processor runs them, and for those of today.

enum class Operation { kOr, kAnd, kAndNot, kNot };

// What the compiler keeps in one register of the processor.
using Block [[gnu::vector_size(16)]] = std::uint64_t;
using WideBlock [[gnu::vector_size(32)]] = std::uint64_t;

template <Operation kOperation, class Piece>
[[gnu::always_inline]] inline void CombinePiece(std::uint8_t* target, const std::uint8_t* source) {
  Piece a;
  Piece b;
  std::memcpy(&a, target, sizeof a);
  std::memcpy(&b, source, sizeof b);
  if constexpr (kOperation == Operation::kOr) a |= b;
  if constexpr (kOperation == Operation::kAnd) a &= b;
  if constexpr (kOperation == Operation::kAndNot) a &= ~b;
  if constexpr (kOperation == Operation::kNot) a = ~b;
  std::memcpy(target, &a, sizeof a);
}

template <Operation kOperation, class Piece>
[[gnu::always_inline]] inline void CombineWith(std::uint8_t* target, const std::uint8_t* source,
                                               std::size_t bytes) {
  std::size_t at = 0;
  for (; at + sizeof(Piece) <= bytes; at += sizeof(Piece)) {
    CombinePiece<kOperation, Piece>(target + at, source + at);
  }
  for (; at < bytes; ++at) CombinePiece<kOperation, std::uint8_t>(target + at, source + at);
}

[[gnu::always_inline]] inline std::int32_t CountWith(const std::uint8_t* bytes, std::size_t size) {
  std::int64_t count = 0;
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= size; at += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes + at, sizeof word);
    count += std::popcount(word);
  }
  for (; at < size; ++at) count += std::popcount(bytes[at]);
  return static_cast<std::int32_t>(count);
}

// Writes the indices two at a time without asking whether there are as many: how many bits a word
// has is what a processor cannot predict.
[[gnu::always_inline]] inline std::size_t ListWord(std::uint64_t word, std::int32_t first,
                                                   std::int32_t* indices) {
  const int count = std::popcount(word);
  do {
    for (int i = 0; i < 2; ++i) {
      *indices++ = first + std::countr_zero(word);
      word &= word - 1;
    }
  } while (word != 0);
  return static_cast<std::size_t>(count);
}

[[gnu::always_inline]] inline std::size_t ListWith(const std::uint8_t* bytes, std::size_t size,
                                                   std::int32_t first, std::int32_t* indices) {
  std::size_t count = 0;
  std::uint64_t word = 0;
  std::size_t at = 0;
  for (; at + sizeof word <= size; at += sizeof word) {
    std::memcpy(&word, bytes + at, sizeof word);
    count += ListWord(word, first + static_cast<std::int32_t>(at * 8), indices + count);
  }
  word = 0;
  std::memcpy(&word, bytes + at, size - at);
  return count + ListWord(word, first + static_cast<std::int32_t>(at * 8), indices + count);
}

template <Operation kOperation>
void CombinePlain(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes) {
  CombineWith<kOperation, Block>(target, source, bytes);
}
std::int32_t CountPlain(const std::uint8_t* bytes, std::size_t size) {
  return CountWith(bytes, size);
}
std::size_t ListPlain(const std::uint8_t* bytes, std::size_t size, std::int32_t first,
                      std::int32_t* indices) {
  return ListWith(bytes, size, first, indices);
}

#if defined(__x86_64__)
bool HasPopcnt() {
  return __builtin_cpu_supports("popcnt") != 0;
}
bool HasAvx2() {
  return HasPopcnt() && __builtin_cpu_supports("bmi") != 0 && __builtin_cpu_supports("avx2") != 0;
}

template <Operation kOperation>
[[gnu::target("avx2")]] void CombineFast(std::uint8_t* target, const std::uint8_t* source,
                                         std::size_t bytes) {
  CombineWith<kOperation, WideBlock>(target, source, bytes);
}
[[gnu::target("popcnt")]] std::int32_t CountFast(const std::uint8_t* bytes, std::size_t size) {
  return CountWith(bytes, size);
}
[[gnu::target("popcnt,bmi")]] std::size_t ListFast(const std::uint8_t* bytes, std::size_t size,
                                                   std::int32_t first, std::int32_t* indices) {
  return ListWith(bytes, size, first, indices);
}
#else
constexpr bool HasPopcnt() {
  return false;
}
constexpr bool HasAvx2() {
  return false;
}

template <Operation kOperation>
constexpr auto CombineFast = CombinePlain<kOperation>;
constexpr auto CountFast = CountPlain;
constexpr auto ListFast = ListPlain;
#endif

template <Operation kOperation>
void Combine(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes) {
  static const auto combine = HasAvx2() ? CombineFast<kOperation> : CombinePlain<kOperation>;
  combine(target, source, bytes);
}

std::uint8_t LowMask(int bits) {
  return static_cast<std::uint8_t>((1U << bits) - 1);
}

}  // namespace

void Or(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes) {
  Combine<Operation::kOr>(target, source, bytes);
}
void And(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes) {
  Combine<Operation::kAnd>(target, source, bytes);
}
void AndNot(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes) {
  Combine<Operation::kAndNot>(target, source, bytes);
}
void Not(std::uint8_t* target, const std::uint8_t* source, std::size_t bytes) {
  Combine<Operation::kNot>(target, source, bytes);
}

std::int32_t Count(const std::uint8_t* bytes, std::size_t size) {
  static const auto count = HasPopcnt() ? CountFast : CountPlain;
  return count(bytes, size);
}

std::size_t List(const std::uint8_t* bytes, std::size_t size, std::int32_t first,
                 std::int32_t* indices) {
  static const auto list = HasAvx2() ? ListFast : ListPlain;
  return list(bytes, size, first, indices);
}

std::int32_t FindDown(const std::uint32_t* words, std::int64_t bits, std::int64_t from) {
  from = std::min(from, bits - 1);
  if (from < 0) return -1;
  std::int64_t index = from / 32;
  std::uint32_t word = words[index] & (~std::uint32_t{0} >> (31 - from % 32));
  while (word == 0) {
    if (--index < 0) return -1;
    word = words[index];
  }
  return static_cast<std::int32_t>(index * 32 + 31 - std::countl_zero(word));
}

void Copy(std::uint8_t* target, std::int64_t targetBit, const std::uint8_t* source,
          std::int64_t sourceBit, std::int64_t count) {
  while (count > 0) {
    if (targetBit % 8 == 0 && sourceBit % 8 == 0 && count >= 8) {
      std::memcpy(target + targetBit / 8, source + sourceBit / 8,
                  static_cast<std::size_t>(count / 8));
      const std::int64_t copied = count / 8 * 8;
      targetBit += copied;
      sourceBit += copied;
      count -= copied;
      continue;
    }
    // As much as ends neither the target's byte nor the source's pair of bytes.
    const int targetShift = static_cast<int>(targetBit % 8);
    const int sourceShift = static_cast<int>(sourceBit % 8);
    const int step = static_cast<int>(std::min<std::int64_t>(8 - targetShift, count));
    unsigned piece = static_cast<unsigned>(source[sourceBit / 8]) >> sourceShift;
    if (step > 8 - sourceShift) piece |= source[sourceBit / 8 + 1] << (8 - sourceShift);
    std::uint8_t& byte = target[targetBit / 8];
    const auto mask = static_cast<std::uint8_t>(LowMask(step) << targetShift);
    byte = static_cast<std::uint8_t>((byte & ~mask) | ((piece << targetShift) & mask));
    targetBit += step;
    sourceBit += step;
    count -= step;
  }
}

}  // namespace vemra::bitwords
