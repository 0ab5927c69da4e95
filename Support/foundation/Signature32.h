#pragma once

#include <cstddef>
#include <cstdint>

#include "Support/Export.h"

namespace vemra {

// A 31-bit fingerprint of bytes: the bytes read as one polynomial over GF(2), the highest bit of
// the first byte first, modulo x^31 + x^3 + 1. Not a cryptographic protection. Stored fingerprints
// depend on every rule here:
// - it starts at 0, and nothing is reflected or inverted;
// - no bytes give 0, and so does any run of zero bytes, so leading zero bytes do not count;
// - texts can be fed in any pieces.
//
// It converts from and to its number, so that it can be stored and compared as one.
// A value object: objects may be used by several threads at once, one object by one at a time.
class SUPPORT_API signature32 {
 public:
  // NOLINTBEGIN(google-explicit-constructor): conversions are meant
  signature32() = default;  // of no bytes
  // A fingerprint that was stored; the sign bit is dropped, as no fingerprint has it.
  signature32(std::int32_t value);
  // Of length bytes; 0 when bytes is null or length is below 1.
  signature32(const void* bytes, std::ptrdiff_t length);
  // Of a text without its terminator; 0 when it is null.
  signature32(const char* text);

  // Continue over more bytes; null or a length below 1 adds none.
  signature32& Feed(const void* bytes, std::ptrdiff_t length);
  signature32& operator<<(const char* text);    // without its terminator
  signature32& operator<<(char value);          // 1 byte
  signature32& operator<<(std::int16_t value);  // 2 bytes, low byte first
  signature32& operator<<(std::int32_t value);  // 4 bytes, low byte first

  operator std::int32_t() const { return value_; }
  // NOLINTEND(google-explicit-constructor)

  // Continues the fingerprint start over length bytes of data. With a mask, byte i counts only when
  // bit i % 8 of mask[i / 8] is set, the lowest bit first; a null mask counts every byte. The mask
  // has at least (length + 7) / 8 bytes. A length below 1 gives start back as it is; otherwise its
  // top bit is dropped first.
  static std::uint32_t MaskedCRC(std::uint32_t start, std::ptrdiff_t length,
                                 const unsigned char* mask, const unsigned char* data);

  // Makes everything ready that is otherwise made ready by the first long text: the choice of the
  // way that is fastest on this processor. Any thread may call it, any number of times.
  static void InitTableModQ();

 private:
  std::int32_t value_ = 0;  // below 2^31
};

}  // namespace vemra
