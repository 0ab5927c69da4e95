#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Support/foundation/FingerprintPolynomial.h"

namespace vemra {

// kFingerprintTables[j][b] is the byte b, moved up by j bytes, modulo the polynomial.
using FingerprintTables = std::array<std::array<std::uint32_t, 256>, 12>;
inline constexpr FingerprintTables kFingerprintTables = [] {
  FingerprintTables tables = {};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    tables[0][byte] = byte;
    for (std::size_t j = 1; j < tables.size(); ++j)
      tables[j][byte] = RaiseByPower(tables[j - 1][byte], 8);
  }
  return tables;
}();

// Continues a fingerprint over count bytes (0 to 8), which stand in chunk, the last one lowest.
// Each byte of the fingerprint moves up by count bytes. The look-ups do not wait for each other,
// and one step of a few bytes costs hardly more than one byte by the plain rule.
inline std::uint32_t FingerprintChunk(std::uint32_t fingerprint, std::uint64_t chunk,
                                      std::size_t count) {
  const auto* const up = kFingerprintTables.data();
  const auto byteOf = [](std::uint64_t value, int i) { return value >> (8 * i) & 0xFF; };
  // Written out: compilers leave loops over constant tables standing.
  const std::uint32_t added = static_cast<std::uint32_t>(chunk & 0xFFFFFF) ^
                              up[3][byteOf(chunk, 3)] ^ up[4][byteOf(chunk, 4)] ^
                              up[5][byteOf(chunk, 5)] ^ up[6][byteOf(chunk, 6)] ^
                              up[7][byteOf(chunk, 7)];
  if (fingerprint == 0) return added;  // as at the start of every text
  return added ^ up[count][byteOf(fingerprint, 0)] ^ up[count + 1][byteOf(fingerprint, 1)] ^
         up[count + 2][byteOf(fingerprint, 2)] ^ up[count + 3][byteOf(fingerprint, 3)];
}

static_assert(std::endian::native == std::endian::little);

// Bytes as a number, the first one highest.
inline std::uint64_t LoadBytes8(const unsigned char* bytes) {
  std::uint64_t value = 0;
  std::memcpy(&value, bytes, sizeof value);
  return __builtin_bswap64(value);
}
inline std::uint64_t LoadBytes4(const unsigned char* bytes) {
  std::uint32_t value = 0;
  std::memcpy(&value, bytes, sizeof value);
  return __builtin_bswap32(value);
}
// The same for 1 to 7 bytes. Loads that overlap spare a loop: the bytes in common agree.
inline std::uint64_t LoadFewBytes(const unsigned char* bytes, std::size_t count) {
  if (count >= 4) return LoadBytes4(bytes) << (8 * (count - 4)) | LoadBytes4(bytes + count - 4);
  const std::size_t middle = count / 2;
  return std::uint64_t{bytes[0]} << (8 * (count - 1)) |
         std::uint64_t{bytes[middle]} << (8 * (count - 1 - middle)) | bytes[count - 1];
}

// Up to 7 bytes.
inline std::uint32_t FingerprintFew(std::uint32_t fingerprint, const unsigned char* bytes,
                                    std::size_t length) {
  return length == 0 ? fingerprint
                     : FingerprintChunk(fingerprint, LoadFewBytes(bytes, length), length);
}

}  // namespace vemra
