#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Support/Export.h"

namespace vemra {

// A set of byte values that tells of many bytes at a time which are members. Any thread may ask.
class SUPPORT_API ByteSet {
 public:
  static constexpr std::size_t kBlock = 64;  // bytes

  ByteSet() = default;  // without members
  explicit ByteSet(std::string_view members);

  void Add(unsigned char c);
  bool Has(unsigned char c) const { return members_[c]; }

  // Which of the kBlock bytes that text begins with are members: bit i for byte i.
  std::uint64_t FindInBlock(const char* text) const;
  // The same byte by byte: what it must give, and how where processors do no better.
  std::uint64_t FindInBlockPlainly(const char* text) const;
  // The position of the next member from the given one on; the text's size when there is none.
  std::size_t FindIn(std::string_view text, std::size_t from) const;

 private:
  std::uint64_t FindInBlockFast(const char* text) const;

  std::array<bool, 256> members_{};
  // The same as bits: byte c is bit (c / 16) % 8 of row c % 16, of the first table below 128
  // and of the second from there on. A processor looks up sixteen rows at a time.
  using Rows = std::array<std::uint8_t, 16>;
  std::array<Rows, 2> rows_{};
};

}  // namespace vemra
