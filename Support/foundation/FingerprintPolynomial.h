#pragma once

#include <cstdint>

namespace vemra {

inline constexpr std::uint32_t kFingerprintPolynomial = 0x80000009;  // x^31 + x^3 + 1
inline constexpr std::uint32_t kFingerprintMask = 0x7FFFFFFF;

// value * x^power modulo the polynomial, for a value below 2^31.
constexpr std::uint32_t RaiseByPower(std::uint32_t value, int power) {
  for (int i = 0; i < power; ++i) {
    value <<= 1;
    if ((value & ~kFingerprintMask) != 0) value ^= kFingerprintPolynomial;
  }
  return value;
}

}  // namespace vemra
