#include <immintrin.h>

#include "Support/foundation/FingerprintPolynomial.h"
#include "Support/foundation/FingerprintSteps.h"

// The bytes in hand, an unreduced polynomial of 128 bits, are worth themselves times x^n before the
// bytes that follow n bits later. Its halves times x^n and x^(n + 64), each modulo the polynomial,
// are worth the same and fit into 128 bits again, so they are added to the bytes that follow. Only
// the last 16 bytes are reduced.

// The rest of the library runs on the oldest processors; these functions only where it was asked.
#define VEMRA_FOLDS __attribute__((target("pclmul,ssse3")))

namespace vemra {
namespace {

// x^(n + 64) and x^n modulo the polynomial, for the high and the low half.
struct Factors {
  std::uint32_t high;
  std::uint32_t low;
};

constexpr Factors FactorsFor(int bits) {
  return {RaiseByPower(1, bits + 64), RaiseByPower(1, bits)};
}
constexpr Factors kOverOneBlock = FactorsFor(128);
constexpr Factors kOverFourBlocks = FactorsFor(512);

VEMRA_FOLDS __m128i ReverseBytes(__m128i value) {
  return _mm_shuffle_epi8(value,
                          _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

VEMRA_FOLDS __m128i LoadBlock(const unsigned char* bytes) {
  return ReverseBytes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
}

VEMRA_FOLDS __m128i ToRegister(Factors factors) {
  return _mm_set_epi64x(factors.high, factors.low);
}

// The sum of the block next and of block moved up to it.
VEMRA_FOLDS __m128i Fold(__m128i block, __m128i factors, __m128i next) {
  const __m128i low = _mm_clmulepi64_si128(block, factors, 0x00);
  const __m128i high = _mm_clmulepi64_si128(block, factors, 0x11);
  return _mm_xor_si128(_mm_xor_si128(low, high), next);
}

}  // namespace

bool CanFoldFingerprint() {
  return __builtin_cpu_supports("pclmul") != 0 && __builtin_cpu_supports("ssse3") != 0;
}

VEMRA_FOLDS std::uint32_t FingerprintByFolding(std::uint32_t fingerprint,
                                               const unsigned char* bytes, std::size_t length) {
  // The fingerprint stands before the first block: moved up over it, it is added to it.
  const std::uint32_t carried = RaiseByPower(fingerprint, 128);
  __m128i first = _mm_xor_si128(LoadBlock(bytes), _mm_set_epi64x(0, carried));
  __m128i second = LoadBlock(bytes + 16);
  __m128i third = LoadBlock(bytes + 32);
  __m128i fourth = LoadBlock(bytes + 48);
  bytes += 64;
  length -= 64;
  // Four chains at once, as the processor begins a multiplication long before the last one ends.
  for (const __m128i factors = ToRegister(kOverFourBlocks); length >= 64; length -= 64) {
    first = Fold(first, factors, LoadBlock(bytes));
    second = Fold(second, factors, LoadBlock(bytes + 16));
    third = Fold(third, factors, LoadBlock(bytes + 32));
    fourth = Fold(fourth, factors, LoadBlock(bytes + 48));
    bytes += 64;
  }
  const __m128i factors = ToRegister(kOverOneBlock);
  __m128i block = Fold(Fold(Fold(first, factors, second), factors, third), factors, fourth);
  for (; length >= 16; length -= 16, bytes += 16) block = Fold(block, factors, LoadBlock(bytes));

  alignas(16) unsigned char last[16];
  _mm_store_si128(reinterpret_cast<__m128i*>(last), ReverseBytes(block));
  return FingerprintByTables(FingerprintByTables(0, last, sizeof last), bytes, length);
}

}  // namespace vemra
