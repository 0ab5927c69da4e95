#pragma once

#include <array>
#include <span>

namespace vemra {

// What the bytes 128 to 255 of a code page stand for; 0 where nothing is assigned. The bytes below
// are ASCII. The figures are those of the Unicode consortium's mapping files.
struct CodePageTable {
  int number;
  std::array<char16_t, 128> upper;
};

// Windows 1250 to 1258, and the other single-byte sets that documents still come in: KOI8-R
// (20866), ISO 8859-2 (28592) and ISO 8859-15 (28605).
std::span<const CodePageTable> GetCodePageTables();

}  // namespace vemra
