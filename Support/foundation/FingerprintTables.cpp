#include "Support/foundation/FingerprintTables.h"

#include "Support/foundation/FingerprintSteps.h"

namespace vemra {

std::uint32_t FingerprintByTables(std::uint32_t fingerprint, const unsigned char* bytes,
                                  std::size_t length) {
  for (; length >= 8; length -= 8, bytes += 8)
    fingerprint = FingerprintChunk(fingerprint, LoadBytes8(bytes), 8);
  return FingerprintFew(fingerprint, bytes, length);
}

}  // namespace vemra
