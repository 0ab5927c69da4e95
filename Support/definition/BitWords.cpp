#include "Support/definition/BitWords.h"

#include <algorithm>

namespace vemra::bitwords {
namespace {

// The same loop is compiled twice on x86, where only newer processors count bits themselves.
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

std::int32_t CountPlain(const std::uint8_t* bytes, std::size_t size) {
  return CountWith(bytes, size);
}

#if defined(__x86_64__)
[[gnu::target("popcnt")]] std::int32_t CountFast(const std::uint8_t* bytes, std::size_t size) {
  return CountWith(bytes, size);
}

bool ProcessorCounts() {
  return __builtin_cpu_supports("popcnt") != 0;
}
#else
constexpr auto CountFast = CountPlain;
bool ProcessorCounts() {
  return false;
}
#endif

std::uint8_t LowMask(int bits) {
  return static_cast<std::uint8_t>((1U << bits) - 1);
}

}  // namespace

std::int32_t Count(const std::uint8_t* bytes, std::size_t size) {
  static const auto count = ProcessorCounts() ? CountFast : CountPlain;
  return count(bytes, size);
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
