#pragma once

#include <cstdint>

#include "Support/definition/FixedBitArray.h"

namespace vemra {

class TavoFile;

// A growable bit array. The size is in bits and set by the caller; the storage is exactly as many
// 32-bit words as the largest size since the storage was last allocated needs. The bits of the last
// used byte above the size are 0 after every operation but SetAt beyond the size and Load of a
// record that has some there.
//
// Growing raises std::bad_alloc and leaves the array as it was; also for a size above 2^31 - 1.
class SUPPORT_API CTavoBitArray : public CTavoFixedBitArray {
 public:
  CTavoBitArray();  // size 0
  // size bits from source, all 0 when it is null. A negative size counts as 0, here and below.
  CTavoBitArray(std::int32_t size, const void* source);
  CTavoBitArray(const CTavoBitArray& other);
  CTavoBitArray& operator=(const CTavoBitArray& other);
  ~CTavoBitArray() override;

  int GetAt(std::int32_t index) const override;  // the bit's mask in its byte; 0 outside the size
  std::int32_t GetSize() const override;
  // Grows when index + the other's size is above this size; a gap is filled with 0.
  void SetAt(std::int32_t index, const CTavoBitArray& other) override;
  using CTavoFixedBitArray::SetAt;
  void SetAll() override;
  void Reverse() override;
  std::int32_t GetTrueCount() const override;

  virtual void SetSize(std::int32_t size);  // new bits are 0
  virtual void RemoveAll();
  // Kept: compares words needed with a thirty-second of the bytes in use, so that it only ever acts
  // on an array whose byte length Load has left larger than its size needs.
  virtual void FreeExtra();
  // Inserts the other's bits, moving those from the index on up. Past the end it leaves a gap of 0.
  virtual void InsertAt(std::int32_t index, const CTavoBitArray& other);
  // Inserts one bit. Past the end the size becomes index + 1; kept: index + 2 when index + 1 is a
  // multiple of 8.
  virtual void InsertAt(std::int32_t index, int value);
  // Kept: cuts count bits off the end, whatever the index. More than the size empties the array.
  virtual void RemoveAt(std::int32_t index, std::uint32_t count);

  // Sets the bits of the last used byte above the size to 0.
  void ClearUnusedBits();

  // This array first grows to the other's size when it is smaller; bits past the other's end count
  // as 0. -= is AND NOT.
  CTavoBitArray& operator|=(const CTavoBitArray& other);
  CTavoBitArray& operator&=(const CTavoBitArray& other);
  CTavoBitArray& operator-=(const CTavoBitArray& other);
  CTavoBitArray operator|(const CTavoBitArray& other) const;
  CTavoBitArray operator&(const CTavoBitArray& other) const;
  // Kept: a - b gives the bits of b that are not in a; callers rely on this operand order.
  CTavoBitArray operator-(const CTavoBitArray& other) const;

  // The record, little-endian: size in bits (4 bytes), byte length (4 bytes), the used bytes.
  // Writes at the file's position. Returns 1, or 0 when writing fails.
  int Save(TavoFile* file) const;
  // Returns 0 and leaves the array unchanged when the record is cut short or its lengths are
  // negative; never allocates more than the file holds. Kept: the byte length beside the size is
  // not taken from the record, so a loaded array is consistent only when the record's byte length
  // is the one the array had before, or after SetSize to the size that it already has.
  int Load(TavoFile* file);

 private:
  void Resize(std::int64_t size);
  void ClearFrom(std::int64_t bit);  // to the end of the storage
  void CopyFrom(const CTavoBitArray& other);

  std::int32_t size_ = 0;  // bits
};

}  // namespace vemra
