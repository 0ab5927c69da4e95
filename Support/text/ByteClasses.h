#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Support/text/ByteSet.h"

namespace vemra {

// What a section must know of a byte: the low two bits are its class, the value of
// TavoWord::WordType (0 a word character, 1 punctuation, 2 white space; 3 for NUL, which ends the
// text), with a bit each for the bytes that can end a sentence or a line.
struct ByteClass {
  static constexpr int kTypeMask = 3;
  static constexpr int kEndsSentence = 4;  // . ! ?
  static constexpr int kEndsLine = 8;      // line feed, carriage return
};

// The types of a block of characters as bits: that of character i is bit i of low and, worth twice
// as much, bit i of high.
struct BlockTypes {
  std::uint64_t low = 0;
  std::uint64_t high = 0;
};

// The ByteClass bits of all bytes, for one byte and for many at a time. Any thread may ask.
class ByteClasses {
 public:
  using Table = std::array<std::uint8_t, 256>;
  static constexpr int kBlock = ByteSet::kBlock;  // characters

  explicit ByteClasses(const Table& classes) : classes_(classes) {
    for (std::size_t c = 0; c < classes.size(); ++c) {
      if (classes[c] & 1) low_.Add(static_cast<unsigned char>(c));
      if (classes[c] & 2) high_.Add(static_cast<unsigned char>(c));
    }
  }

  std::uint8_t operator[](unsigned char c) const { return classes_[c]; }

  // The types of the kBlock characters that text begins with.
  BlockTypes GetTypes(const char* text) const {
    return {low_.FindInBlock(text), high_.FindInBlock(text)};
  }

 private:
  Table classes_;
  ByteSet low_;  // of which the type has the low bit
  ByteSet high_;
};

}  // namespace vemra
