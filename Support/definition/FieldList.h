#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Support/foundation/Position.h"

namespace vemra {

// The most fields that a database can have; field numbers run from 0 to kMaxFields - 1.
inline constexpr int kMaxFields = 125;

// A set of field numbers: a plain value of 16 bytes, copied freely, without any lock.
// The storage holds the numbers 0 to 127. An iteration yields 0 to 124 only: 125 to 127 are set by
// SetAll, Invert and ~, and seen by IsEmpty and CopyBytes, but are no field numbers.
class CTavoFieldList {
 public:
  CTavoFieldList() = default;

  void Clear() { words_ = {}; }
  // Field numbers are not checked: 0 to 127.
  void Set(int fieldno) { Word(fieldno) |= Mask(fieldno); }
  void Reset(int fieldno) { Word(fieldno) &= ~Mask(fieldno); }
  // The bit's mask, not 1, when the field is in the set.
  std::uint32_t IsSet(int fieldno) const {
    return words_[static_cast<std::size_t>(fieldno) >> 5] & Mask(fieldno);
  }
  void SetAll() { words_.fill(~std::uint32_t{0}); }
  void Invert() {
    for (std::uint32_t& word : words_) word = ~word;
  }
  int IsEmpty() const { return (words_[0] | words_[1] | words_[2] | words_[3]) == 0 ? 1 : 0; }

  // A position is the field number plus 1.
  POSITION GetStartPosition() const { return GetNextPosition(0); }
  // Returns the field number at the position, which must not be 0, and moves it to the next one.
  int GetNextFieldno(POSITION& position) const {
    const int fieldno = static_cast<int>(position) - 1;
    position = GetNextPosition(fieldno + 1);
    return fieldno;
  }

  // The first count (0 to 16) raw bytes: number f is bit f % 8 of byte f / 8.
  void CopyBytes(char* destination, std::size_t count) const {
    std::memcpy(destination, words_.data(), std::min(count, sizeof words_));
  }

  CTavoFieldList& operator|=(const CTavoFieldList& other) {
    for (std::size_t i = 0; i < words_.size(); ++i) words_[i] |= other.words_[i];
    return *this;
  }
  CTavoFieldList& operator&=(const CTavoFieldList& other) {
    for (std::size_t i = 0; i < words_.size(); ++i) words_[i] &= other.words_[i];
    return *this;
  }
  CTavoFieldList operator|(const CTavoFieldList& other) const {
    return CTavoFieldList(*this) |= other;
  }
  CTavoFieldList operator&(const CTavoFieldList& other) const {
    return CTavoFieldList(*this) &= other;
  }
  CTavoFieldList operator~() const {
    CTavoFieldList result(*this);
    result.Invert();
    return result;
  }
  bool operator==(const CTavoFieldList&) const = default;

 protected:
  // From four words.
  explicit CTavoFieldList(const std::uint32_t* words) { std::copy_n(words, 4, words_.begin()); }

  // The position of the lowest field number >= from in the set, or 0.
  POSITION GetNextPosition(int from) const {
    if (from >= kMaxFields) return 0;
    auto index = static_cast<std::size_t>(from) >> 5;
    std::uint32_t word = words_[index] & (~std::uint32_t{0} << (from & 31));
    while (word == 0) {
      if (++index == words_.size()) return 0;
      word = words_[index];
    }
    const auto fieldno = static_cast<int>(index) * 32 + std::countr_zero(word);
    return fieldno < kMaxFields ? static_cast<POSITION>(fieldno) + 1 : 0;
  }

 private:
  static std::uint32_t Mask(int fieldno) { return std::uint32_t{1} << (fieldno & 31); }
  std::uint32_t& Word(int fieldno) { return words_[static_cast<std::size_t>(fieldno) >> 5]; }

  std::array<std::uint32_t, 4> words_{};
};

}  // namespace vemra
