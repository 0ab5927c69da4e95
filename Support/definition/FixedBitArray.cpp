#include "Support/definition/FixedBitArray.h"

#include <algorithm>
#include <cstring>

#include "Support/definition/BitArray.h"
#include "Support/definition/BitWords.h"

namespace vemra {

CTavoFixedBitArray::CTavoFixedBitArray() : words_(kBytes / 4), byteLength_(kBytes) {}

CTavoFixedBitArray::CTavoFixedBitArray(const void* source, std::uint16_t count)
    : CTavoFixedBitArray(source, count, 0) {}

CTavoFixedBitArray::CTavoFixedBitArray(const void* source, std::uint16_t count,
                                       std::uint16_t offset) {
  if (std::size_t{offset} + count > kBytes) return;
  words_.resize(kBytes / 4);
  byteLength_ = kBytes;
  SetBitsAt(source, offset, count);  // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
}

CTavoFixedBitArray::CTavoFixedBitArray(const CTavoFixedBitArray& other)
    : CTavoFixedBitArray(&other) {}

CTavoFixedBitArray::CTavoFixedBitArray(const CTavoFixedBitArray* other) : CTavoFixedBitArray() {
  if (other != nullptr) {
    std::copy_n(other->Bytes(), std::min(kBytes, other->GetUsedBytes()), Bytes());
  }
}

CTavoFixedBitArray::CTavoFixedBitArray(const void* source) : CTavoFixedBitArray() {
  if (source != nullptr) SetBits(source);
}

CTavoFixedBitArray& CTavoFixedBitArray::operator=(const CTavoFixedBitArray& other) = default;

CTavoFixedBitArray::~CTavoFixedBitArray() = default;

int CTavoFixedBitArray::GetAt(std::int32_t index) const {
  return index >= 0 && index < kBits && (*this)[index] != 0 ? 1 : 0;
}

std::int32_t CTavoFixedBitArray::GetSize() const {
  return 0;
}

void CTavoFixedBitArray::SetAt(std::int32_t index, const CTavoBitArray& other) {
  if (index < 0 || index >= kBits || GetStorageBytes() < kBytes) return;
  CTavoBitArray all(kBits, Bytes());
  all.SetAt(index, other);
  SetBits(static_cast<const CTavoFixedBitArray&>(all).Bytes());
}

void CTavoFixedBitArray::SetAt(std::int32_t index, int value) {
  const auto byte = static_cast<std::size_t>(index) / 8;
  if (index < 0 || byte >= GetStorageBytes()) return;
  const auto mask = static_cast<std::uint8_t>(1U << (index % 8));
  if (value != 0) {
    Bytes()[byte] |= mask;
  } else {
    Bytes()[byte] &= static_cast<std::uint8_t>(~mask);
  }
}

void CTavoFixedBitArray::SetAll() {
  std::fill_n(Bytes(), GetUsedBytes(), std::uint8_t{0xFF});
}

void CTavoFixedBitArray::ResetAll() {
  std::fill_n(Bytes(), GetUsedBytes(), std::uint8_t{0});
}

void CTavoFixedBitArray::Reverse() {
  bitwords::Not(Bytes(), Bytes(), GetUsedBytes());
}

void CTavoFixedBitArray::SetBitsAt(const void* source, std::uint16_t offset, std::uint16_t count) {
  if (std::size_t{offset} + count > std::min(kBytes, GetStorageBytes())) return;
  std::copy_n(static_cast<const std::uint8_t*>(source), count, Bytes() + offset);
}

void CTavoFixedBitArray::MergeBitsAt(const void* source, std::uint16_t offset,
                                     std::uint16_t count) {
  if (count == 0 || std::size_t{offset} + count > std::min(kBytes, GetStorageBytes())) return;
  const std::uint8_t first = Bytes()[offset];
  SetBitsAt(source, offset, count);
  Bytes()[offset] |= first;
}

std::int32_t CTavoFixedBitArray::GetTrueCount() const {
  return bitwords::Count(Bytes(), GetUsedBytes());
}

std::int32_t CTavoFixedBitArray::GetFirst() const {
  return GetNext(-1);
}

std::int32_t CTavoFixedBitArray::GetPrevious(std::int32_t index) const {
  return bitwords::FindDown(words_.data(), static_cast<std::int64_t>(GetUsedBytes()) * 8,
                            std::int64_t{index} - 1);
}

std::int32_t CTavoFixedBitArray::GetNext(std::int32_t index) const {
  const auto from = static_cast<std::uint32_t>(std::max(index, -1)) + 1;
  return bitwords::FindUp(words_.data(), static_cast<std::uint32_t>(GetUsedBytes() * 8), from);
}

std::int32_t CTavoFixedBitArray::GetLast() const {
  return GetPrevious(INT32_MAX);
}

int CTavoFixedBitArray::operator[](std::int32_t index) const {
  const auto byte = static_cast<std::size_t>(index) / 8;
  if (index < 0 || byte >= GetStorageBytes()) return 0;
  return Bytes()[byte] & (1 << (index % 8));
}

std::size_t CTavoFixedBitArray::ListSetBits(std::size_t byte, std::int32_t* indices) const {
  return bitwords::List(Bytes() + byte, std::min(GetUsedBytes() - byte, kListedBits / 8),
                        static_cast<std::int32_t>(byte * 8), indices);
}

std::size_t CTavoFixedBitArray::GetUsedBytes() const {
  return std::min(static_cast<std::size_t>(byteLength_), GetStorageBytes());
}

void CTavoFixedBitArray::SetBits(const void* source) {
  std::copy_n(static_cast<const std::uint8_t*>(source), std::min(kBytes, GetStorageBytes()),
              Bytes());
}

CTavoFixedBitArray* CTavoFixedBitArray::operator|(const CTavoFixedBitArray* other) {
  bitwords::Or(Bytes(), other->Bytes(), std::min(GetUsedBytes(), other->GetUsedBytes()));
  return this;
}

CTavoFixedBitArray* CTavoFixedBitArray::operator&(const CTavoFixedBitArray* other) {
  const std::size_t common = std::min(GetUsedBytes(), other->GetUsedBytes());
  bitwords::And(Bytes(), other->Bytes(), common);
  std::fill(Bytes() + common, Bytes() + GetUsedBytes(), std::uint8_t{0});
  return this;
}

CTavoFixedBitArray* CTavoFixedBitArray::operator-(const CTavoFixedBitArray* other) {
  bitwords::AndNot(Bytes(), other->Bytes(), std::min(GetUsedBytes(), other->GetUsedBytes()));
  return this;
}

CTavoFixedBitArray* CTavoFixedBitArray::operator!() {
  Reverse();
  return this;
}

CTavoFixedBitArray CTavoFixedBitArray::operator|(const CTavoFixedBitArray& other) const {
  CTavoFixedBitArray result(other);
  result | this;
  return result;
}

CTavoFixedBitArray CTavoFixedBitArray::operator&(const CTavoFixedBitArray& other) const {
  CTavoFixedBitArray result(other);
  result& this;
  return result;
}

CTavoFixedBitArray CTavoFixedBitArray::operator-(const CTavoFixedBitArray& other) const {
  CTavoFixedBitArray result(other);
  result - this;
  return result;
}

}  // namespace vemra
