#include "Support/definition/BitArray.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <new>

#include "Support/definition/BitWords.h"
#include "Support/foundation/File.h"

namespace vemra {
namespace {

std::int64_t BytesFor(std::int64_t bits) {
  return (bits + 7) / 8;
}
std::int64_t WordsFor(std::int64_t bits) {
  return (bits + 31) / 32;
}

}  // namespace

CTavoBitArray::CTavoBitArray() : CTavoFixedBitArray(WithoutStorage()) {}

CTavoBitArray::CTavoBitArray(std::int32_t size, const void* source) : CTavoBitArray() {
  Resize(size);
  if (source == nullptr) return;
  std::copy_n(static_cast<const std::uint8_t*>(source), GetUsedBytes(), Bytes());
  ClearUnusedBits();
}

CTavoBitArray::CTavoBitArray(const CTavoBitArray& other) : CTavoFixedBitArray(WithoutStorage()) {
  CopyFrom(other);
}

CTavoBitArray& CTavoBitArray::operator=(const CTavoBitArray& other) {
  if (this != &other) CopyFrom(other);
  return *this;
}

CTavoBitArray::~CTavoBitArray() = default;

void CTavoBitArray::CopyFrom(const CTavoBitArray& other) {
  Resize(other.size_);
  const std::size_t common = std::min(GetUsedBytes(), other.GetUsedBytes());
  std::copy_n(other.Bytes(), common, Bytes());
  std::fill(Bytes() + common, Bytes() + GetUsedBytes(), std::uint8_t{0});
}

int CTavoBitArray::GetAt(std::int32_t index) const {
  return index >= 0 && index < size_ ? (*this)[index] : 0;
}

std::int32_t CTavoBitArray::GetSize() const {
  return size_;
}

void CTavoBitArray::SetAt(std::int32_t index, const CTavoBitArray& other) {
  if (index < 0) return;
  if (this == &other) {
    SetAt(index, CTavoBitArray(other));
    return;
  }
  const std::int64_t end = std::int64_t{index} + other.size_;
  if (end > size_) Resize(end);
  const auto there =
      std::min<std::int64_t>(other.size_, static_cast<std::int64_t>(other.GetStorageBytes()) * 8);
  bitwords::Copy(Bytes(), index, other.Bytes(), 0, there);
  const CTavoBitArray missing(static_cast<std::int32_t>(other.size_ - there), nullptr);
  bitwords::Copy(Bytes(), index + there, missing.Bytes(), 0, missing.size_);
}

void CTavoBitArray::SetAll() {
  CTavoFixedBitArray::SetAll();
  ClearUnusedBits();
}

void CTavoBitArray::Reverse() {
  CTavoFixedBitArray::Reverse();
  ClearUnusedBits();
}

void CTavoBitArray::SetSize(std::int32_t size) {
  Resize(size);
}

void CTavoBitArray::Resize(std::int64_t size) {
  if (size > INT32_MAX) throw std::bad_array_new_length();
  size = std::max<std::int64_t>(size, 0);
  ClearFrom(std::min<std::int64_t>(size, size_));
  const auto words = static_cast<std::size_t>(WordsFor(size));
  if (words > words_.capacity()) {
    Words grown(words);  // exactly as many; the vector itself would keep a reserve
    std::copy_n(Bytes(), GetUsedBytes(), reinterpret_cast<std::uint8_t*>(grown.data()));
    words_ = std::move(grown);
  } else {
    words_.resize(words);
  }
  size_ = static_cast<std::int32_t>(size);
  byteLength_ = static_cast<std::int32_t>(BytesFor(size));
}

void CTavoBitArray::ClearFrom(std::int64_t bit) {
  const auto byte = static_cast<std::size_t>(bit / 8);
  if (byte >= GetStorageBytes()) return;
  Bytes()[byte] &= static_cast<std::uint8_t>((1U << (bit % 8)) - 1);
  std::fill(Bytes() + byte + 1, Bytes() + GetStorageBytes(), std::uint8_t{0});
}

void CTavoBitArray::RemoveAll() {
  words_ = Words();
  size_ = 0;
  byteLength_ = 0;
}

void CTavoBitArray::FreeExtra() {
  if (size_ == 0) {
    RemoveAll();
    return;
  }
  const std::int64_t words = WordsFor(size_);
  if (words >= WordsFor(byteLength_)) return;
  Words exact(static_cast<std::size_t>(words));
  std::copy_n(Bytes(), std::min(GetUsedBytes(), exact.size() * sizeof(std::uint32_t)),
              reinterpret_cast<std::uint8_t*>(exact.data()));
  words_ = std::move(exact);
  byteLength_ = static_cast<std::int32_t>(BytesFor(size_));
  ClearUnusedBits();
}

void CTavoBitArray::InsertAt(std::int32_t index, const CTavoBitArray& other) {
  if (index < 0) return;
  const CTavoBitArray inserted(other);
  const std::int32_t oldSize = size_;
  const CTavoBitArray old(*this);
  Resize(std::int64_t{std::max(index, oldSize)} + inserted.size_);
  if (index < oldSize) {
    bitwords::Copy(Bytes(), std::int64_t{index} + inserted.size_, old.Bytes(), index,
                   std::int64_t{oldSize} - index);
  }
  SetAt(index, inserted);
}

void CTavoBitArray::InsertAt(std::int32_t index, int value) {
  if (index < 0) return;
  if (index < size_) {
    const CTavoBitArray one(1, nullptr);
    InsertAt(index, one);
  } else {
    const std::int64_t size = std::int64_t{index} + 1;
    Resize(size % 8 == 0 ? size + 1 : size);
  }
  SetAt(index, value);
}

void CTavoBitArray::RemoveAt(std::int32_t /*index*/, std::uint32_t count) {
  Resize(std::int64_t{size_} - count);
}

void CTavoBitArray::ClearUnusedBits() {
  const std::size_t used = GetUsedBytes();
  if (used == 0 || size_ % 8 == 0) return;
  Bytes()[used - 1] &= static_cast<std::uint8_t>((1U << (size_ % 8)) - 1);
}

CTavoBitArray& CTavoBitArray::operator|=(const CTavoBitArray& other) {
  if (size_ < other.size_) Resize(other.size_);
  static_cast<CTavoFixedBitArray&>(*this) | static_cast<const CTavoFixedBitArray*>(&other);
  return *this;
}

CTavoBitArray& CTavoBitArray::operator&=(const CTavoBitArray& other) {
  if (size_ < other.size_) Resize(other.size_);
  static_cast<CTavoFixedBitArray&>(*this) & static_cast<const CTavoFixedBitArray*>(&other);
  return *this;
}

CTavoBitArray& CTavoBitArray::operator-=(const CTavoBitArray& other) {
  if (size_ < other.size_) Resize(other.size_);
  static_cast<CTavoFixedBitArray&>(*this) - static_cast<const CTavoFixedBitArray*>(&other);
  return *this;
}

CTavoBitArray CTavoBitArray::operator|(const CTavoBitArray& other) const {
  CTavoBitArray result(other);
  result |= *this;
  return result;
}

CTavoBitArray CTavoBitArray::operator&(const CTavoBitArray& other) const {
  CTavoBitArray result(other);
  result &= *this;
  return result;
}

CTavoBitArray CTavoBitArray::operator-(const CTavoBitArray& other) const {
  CTavoBitArray result(other);
  result -= *this;
  return result;
}

std::int32_t CTavoBitArray::GetTrueCount() const {
  return size_ == 0 ? 0 : CTavoFixedBitArray::GetTrueCount();
}

int CTavoBitArray::Save(TavoFile* file) const {
  const auto used = static_cast<std::int32_t>(GetUsedBytes());
  try {
    file->Write(&size_, sizeof size_);
    file->Write(&used, sizeof used);
    if (used > 0) file->Write(Bytes(), GetUsedBytes());
    return 1;
  } catch (const std::exception&) {
    return 0;
  }
}

int CTavoBitArray::Load(TavoFile* file) {
  try {
    std::int32_t size = 0;
    std::int32_t length = 0;
    if (file->Read(&size, sizeof size) != sizeof size) return 0;
    if (file->Read(&length, sizeof length) != sizeof length) return 0;
    if (size < 0 || length < 0) return 0;
    if (length > file->GetLength() - file->Seek(0, TavoFile::Origin::kCurrent)) return 0;
    const auto bytes = static_cast<std::size_t>(length);
    Words loaded((bytes + 3) / 4);
    if (file->Read(loaded.data(), bytes) != bytes) return 0;
    words_ = std::move(loaded);
    size_ = size;
    return 1;
  } catch (const std::exception&) {
    return 0;
  }
}

}  // namespace vemra
