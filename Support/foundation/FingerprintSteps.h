#pragma once

#include <cstddef>
#include <cstdint>

// The ways to continue a fingerprint (below 2^31) over bytes. All give the same answers; they are
// separate so that each can be tested on any machine. Not exported.
namespace vemra {

// Eight bytes at a time by tables.
std::uint32_t FingerprintByTables(std::uint32_t fingerprint, const unsigned char* bytes,
                                  std::size_t length);

// Whether this processor multiplies polynomials.
bool CanFoldFingerprint();

// Below this length folding is no faster, and not possible.
inline constexpr std::size_t kShortestFold = 64;  // bytes

// By polynomial multiplication, 64 bytes at a time. Needs CanFoldFingerprint() and at least
// kShortestFold bytes.
std::uint32_t FingerprintByFolding(std::uint32_t fingerprint, const unsigned char* bytes,
                                   std::size_t length);

}  // namespace vemra
