#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

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
  const auto* const tables = kFingerprintTables.data();
  const auto byteOf = [](std::uint64_t value, int i) { return value >> (8 * i) & 0xFF; };
  std::uint32_t result = static_cast<std::uint32_t>(chunk & 0xFFFFFF);
  for (int i = 3; i < 8; ++i) result ^= tables[i][byteOf(chunk, i)];
  for (int i = 0; i < 4; ++i) result ^= tables[count + std::size_t(i)][byteOf(fingerprint, i)];
  return result;
}

}  // namespace vemra
