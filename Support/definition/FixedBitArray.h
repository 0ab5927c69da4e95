#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Support/Export.h"

namespace vemra {

class CTavoBitArray;

// A set of exactly 16,384 bits in an owned block of 2,048 bytes. Bit i is bit i % 8 of byte i / 8,
// so raw bytes can be exchanged with field lists, growable arrays and stored records.
//
// Used by one thread at a time. Constructors raise std::bad_alloc; nothing else fails. Only GetAt
// checks its index; every access is nevertheless bounded by the storage that is there: outside it
// bits read as 0 and writes are lost. An array left without storage behaves as an empty one.
//
// The virtual operations are the interface shared with CTavoBitArray, which derives from this class
// and keeps its bits in the same block; run-time type information tells the two apart.
class SUPPORT_API CTavoFixedBitArray {
 public:
  static constexpr std::int32_t kBits = 16384;
  static constexpr std::size_t kBytes = kBits / 8;

  CTavoFixedBitArray();  // all bits 0
  // The first count bytes from source, the rest 0. Kept: more than 2,048 leaves no storage.
  CTavoFixedBitArray(const void* source, std::uint16_t count);
  // count bytes at byte offset, the rest 0. Kept: a range past the block leaves no storage.
  CTavoFixedBitArray(const void* source, std::uint16_t count, std::uint16_t offset);
  // The other's bits; none from a null pointer.
  CTavoFixedBitArray(const CTavoFixedBitArray& other);
  explicit CTavoFixedBitArray(const CTavoFixedBitArray* other);
  explicit CTavoFixedBitArray(const void* source);  // 2,048 bytes, all 0 when null
  CTavoFixedBitArray& operator=(const CTavoFixedBitArray& other);
  virtual ~CTavoFixedBitArray();

  virtual int GetAt(std::int32_t index) const;  // 0 or 1; 0 outside 0..16383
  virtual std::int32_t GetSize() const;         // always 0, kept: the extent is fixed
  // Writes the other's bits from the index on; what would land past the end is dropped.
  virtual void SetAt(std::int32_t index, const CTavoBitArray& other);
  virtual void SetAt(std::int32_t index, int value);
  virtual void SetAll();
  virtual void ResetAll();
  virtual void Reverse();  // complements every bit
  // Offsets and counts are bytes. Nothing happens when offset + count is past the block.
  virtual void SetBitsAt(const void* source, std::uint16_t offset, std::uint16_t count);
  // Kept: only the first byte is merged (OR), the following ones replace. A count of 0 does
  // nothing.
  virtual void MergeBitsAt(const void* source, std::uint16_t offset, std::uint16_t count);
  virtual std::int32_t GetTrueCount() const;
  // The scans return the bit's index, -1 when there is none.
  virtual std::int32_t GetFirst() const;
  virtual std::int32_t GetPrevious(std::int32_t index) const;  // the highest set bit below index
  virtual std::int32_t GetNext(std::int32_t index) const;      // the lowest set bit above index
  virtual std::int32_t GetLast() const;
  virtual int operator[](std::int32_t index) const;  // the bit's mask in its byte

  // Calls visit(index) for each set bit, the lowest first: the fast way through all of them. The
  // array must not change meanwhile.
  template <class Visit>
  void ForEachSetBit(Visit visit) const {
    std::int32_t indices[kListedBits + 2];
    for (std::size_t byte = 0; byte < GetUsedBytes(); byte += kListedBits / 8) {
      const std::size_t count = ListSetBits(byte, indices);
      for (std::size_t i = 0; i < count; ++i) visit(indices[i]);
    }
  }

  void SetBits(const void* source);  // 2,048 bytes over the whole block

  // In place, over the whole block; each returns this. - is AND NOT.
  CTavoFixedBitArray* operator|(const CTavoFixedBitArray* other);
  CTavoFixedBitArray* operator&(const CTavoFixedBitArray* other);
  CTavoFixedBitArray* operator-(const CTavoFixedBitArray* other);
  CTavoFixedBitArray* operator!();

  CTavoFixedBitArray operator|(const CTavoFixedBitArray& other) const;
  CTavoFixedBitArray operator&(const CTavoFixedBitArray& other) const;
  // Kept: a - b gives the bits of b that are not in a; callers rely on this operand order.
  CTavoFixedBitArray operator-(const CTavoFixedBitArray& other) const;

 protected:
  using Words = std::vector<std::uint32_t>;

  struct WithoutStorage {};
  explicit CTavoFixedBitArray(WithoutStorage) noexcept {}

  std::size_t GetStorageBytes() const { return words_.size() * sizeof(std::uint32_t); }
  // The bytes that scans and whole-array operations run over, never more than the storage.
  std::size_t GetUsedBytes() const;
  std::uint8_t* Bytes() { return reinterpret_cast<std::uint8_t*>(words_.data()); }
  const std::uint8_t* Bytes() const { return reinterpret_cast<const std::uint8_t*>(words_.data()); }

  static constexpr std::size_t kListedBits = 2048;  // at once
  // The indices of the set bits among so many from a used byte on; returns their number.
  std::size_t ListSetBits(std::size_t byte, std::int32_t* indices) const;

  Words words_;
  std::int32_t byteLength_ = 0;  // bytes in use
};

}  // namespace vemra
