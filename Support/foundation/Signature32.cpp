#include "Support/foundation/Signature32.h"

#include <algorithm>
#include <cstring>

#include "Support/foundation/FingerprintPolynomial.h"
#include "Support/foundation/FingerprintSteps.h"
#include "Support/foundation/FingerprintTables.h"

namespace vemra {
namespace {

bool Folds() {
  static const bool folds = CanFoldFingerprint();
  return folds;
}

std::uint32_t Continue(std::uint32_t fingerprint, const unsigned char* bytes, std::size_t length) {
  if (length < 8) return FingerprintFew(fingerprint, bytes, length);  // most words
  return length >= kShortestFold && Folds() ? FingerprintByFolding(fingerprint, bytes, length)
                                            : FingerprintByTables(fingerprint, bytes, length);
}

// The bytes that one byte of a mask picks out of up to eight are one chunk.
std::uint32_t ContinueMasked(std::uint32_t fingerprint, const unsigned char* bytes,
                             std::size_t length, const unsigned char* mask) {
  for (std::size_t at = 0; at < length; at += 8, ++mask) {
    std::uint64_t chunk = 0;
    std::size_t count = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(8, length - at); ++i) {
      if ((*mask >> i & 1) == 0) continue;
      chunk = chunk << 8 | bytes[at + i];
      ++count;
    }
    fingerprint = FingerprintChunk(fingerprint, chunk, count);
  }
  return fingerprint;
}

}  // namespace

signature32::signature32(std::int32_t value)
    : value_(static_cast<std::int32_t>(static_cast<std::uint32_t>(value) & kFingerprintMask)) {}

signature32::signature32(const void* bytes, std::ptrdiff_t length) {
  Feed(bytes, length);
}

signature32::signature32(const char* text) {
  *this << text;
}

signature32& signature32::Feed(const void* bytes, std::ptrdiff_t length) {
  if (bytes == nullptr) return *this;
  value_ = static_cast<std::int32_t>(MaskedCRC(static_cast<std::uint32_t>(value_), length, nullptr,
                                               static_cast<const unsigned char*>(bytes)));
  return *this;
}

signature32& signature32::operator<<(const char* text) {
  return text == nullptr ? *this : Feed(text, static_cast<std::ptrdiff_t>(std::strlen(text)));
}

signature32& signature32::operator<<(char value) {
  return Feed(&value, 1);
}

signature32& signature32::operator<<(std::int16_t value) {
  const auto bits = static_cast<std::uint16_t>(value);
  const unsigned char bytes[] = {static_cast<unsigned char>(bits),
                                 static_cast<unsigned char>(bits >> 8)};
  return Feed(bytes, sizeof bytes);
}

signature32& signature32::operator<<(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  return *this << static_cast<std::int16_t>(bits) << static_cast<std::int16_t>(bits >> 16);
}

std::uint32_t signature32::MaskedCRC(std::uint32_t start, std::ptrdiff_t length,
                                     const unsigned char* mask, const unsigned char* data) {
  if (length < 1) return start;
  start &= kFingerprintMask;
  const auto size = static_cast<std::size_t>(length);
  return mask == nullptr ? Continue(start, data, size) : ContinueMasked(start, data, size, mask);
}

void signature32::InitTableModQ() {
  Folds();
}

}  // namespace vemra
