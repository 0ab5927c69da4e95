#include "Support/foundation/FingerprintTables.h"

#include <bit>
#include <cstring>

#include "Support/foundation/FingerprintSteps.h"

namespace vemra {
namespace {

static_assert(std::endian::native == std::endian::little);

// Bytes as a number, the first one highest.
std::uint64_t Load8(const unsigned char* bytes) {
  std::uint64_t value = 0;
  std::memcpy(&value, bytes, sizeof value);
  return __builtin_bswap64(value);
}

std::uint64_t Load4(const unsigned char* bytes) {
  std::uint32_t value = 0;
  std::memcpy(&value, bytes, sizeof value);
  return __builtin_bswap32(value);
}

// The same for 1 to 7 bytes. Loads that overlap spare a loop: the bytes in common agree.
std::uint64_t LoadFew(const unsigned char* bytes, std::size_t count) {
  if (count >= 4) return Load4(bytes) << (8 * (count - 4)) | Load4(bytes + count - 4);
  const std::size_t middle = count / 2;
  return std::uint64_t{bytes[0]} << (8 * (count - 1)) |
         std::uint64_t{bytes[middle]} << (8 * (count - 1 - middle)) | bytes[count - 1];
}

}  // namespace

std::uint32_t FingerprintByTables(std::uint32_t fingerprint, const unsigned char* bytes,
                                  std::size_t length) {
  for (; length >= 8; length -= 8, bytes += 8)
    fingerprint = FingerprintChunk(fingerprint, Load8(bytes), 8);
  return length == 0 ? fingerprint : FingerprintChunk(fingerprint, LoadFew(bytes, length), length);
}

}  // namespace vemra
