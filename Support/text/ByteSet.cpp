#include "Support/text/ByteSet.h"

#include <bit>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vemra {

ByteSet::ByteSet(std::string_view members) {
  for (const char c : members) Add(static_cast<unsigned char>(c));
}

void ByteSet::Add(unsigned char c) {
  members_[c] = true;
  rows_[c / 128][c % 16] |= static_cast<std::uint8_t>(1 << c / 16 % 8);
}

std::uint64_t ByteSet::FindInBlockPlainly(const char* text) const {
  std::uint64_t found = 0;
  for (std::size_t i = 0; i < kBlock; ++i) {
    found |= std::uint64_t{Has(static_cast<unsigned char>(text[i]))} << i;
  }
  return found;
}

#if defined(__x86_64__)
namespace {

// The rest of the library runs on the oldest processors; these functions only where it was asked.
#define VEMRA_SHUFFLES __attribute__((target("ssse3")))

bool HasShuffle() {
  return __builtin_cpu_supports("ssse3") != 0;
}

constexpr std::size_t kStep = 16;  // bytes

VEMRA_SHUFFLES __m128i Load(const void* bytes) {
  return _mm_loadu_si128(static_cast<const __m128i*>(bytes));
}

}  // namespace

// A shuffle looks up sixteen rows by the low halves of sixteen bytes. It gives 0 where an index has
// its top bit set, which keeps the two tables apart.
VEMRA_SHUFFLES std::uint64_t ByteSet::FindInBlockFast(const char* text) const {
  const __m128i below128 = Load(rows_[0].data());
  const __m128i from128 = Load(rows_[1].data());
  const __m128i bits = _mm_set_epi8(-128, 64, 32, 16, 8, 4, 2, 1, -128, 64, 32, 16, 8, 4, 2, 1);
  const __m128i lowHalf = _mm_set1_epi8(0x0f);
  const __m128i lowHalfAndTop = _mm_set1_epi8(static_cast<char>(0x8f));
  const __m128i top = _mm_set1_epi8(static_cast<char>(0x80));
  std::uint64_t found = 0;
  for (std::size_t i = 0; i < kBlock; i += kStep) {
    const __m128i bytes = Load(text + i);
    const __m128i index = _mm_and_si128(bytes, lowHalfAndTop);
    const __m128i row = _mm_or_si128(_mm_shuffle_epi8(below128, index),
                                     _mm_shuffle_epi8(from128, _mm_xor_si128(index, top)));
    const __m128i bit = _mm_shuffle_epi8(bits, _mm_and_si128(_mm_srli_epi16(bytes, 4), lowHalf));
    const __m128i members = _mm_cmpeq_epi8(_mm_and_si128(row, bit), bit);
    found |= static_cast<std::uint64_t>(_mm_movemask_epi8(members)) << i;
  }
  return found;
}
#else
namespace {

constexpr bool HasShuffle() {
  return false;
}

}  // namespace

std::uint64_t ByteSet::FindInBlockFast(const char* text) const {
  return FindInBlockPlainly(text);
}
#endif

std::uint64_t ByteSet::FindInBlock(const char* text) const {
  static const bool fast = HasShuffle();
  return fast ? FindInBlockFast(text) : FindInBlockPlainly(text);
}

std::size_t ByteSet::FindIn(std::string_view text, std::size_t from) const {
  for (; from + kBlock <= text.size(); from += kBlock) {
    const std::uint64_t found = FindInBlock(text.data() + from);
    if (found != 0) return from + static_cast<std::size_t>(std::countr_zero(found));
  }
  while (from < text.size() && !Has(static_cast<unsigned char>(text[from]))) ++from;
  return from;
}

}  // namespace vemra
