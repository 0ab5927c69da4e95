#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"
#include "Support/foundation/File.h"

// Compact binary records on an open file, at its present position. Each returns 1, or 0 on failure;
// what the file raises is caught.
//
//   integer              bytes
//   0 to 254             the value
//   255 to 65534         FF, then 2 bytes, low byte first
//   any other            FF FF FF, then 4 bytes in two's complement, low byte first
//
// A string is its length in bytes as an integer, then its bytes.
namespace vemra {

SUPPORT_API int WriteInt(TavoFile& file, std::int32_t value);
// A short read leaves value as it was.
SUPPORT_API int ReadInt(TavoFile& file, std::int32_t& value);
// Fails, writing nothing, for a string of 2^31 bytes or more.
SUPPORT_API int WriteString(TavoFile& file, const std::string& text);
// Fails for a negative length. text is as it was when the length could not be had, and empty when
// the bytes could not. Memory grows with what is read, not with what the length claims.
SUPPORT_API int ReadString(TavoFile& file, std::string& text);
SUPPORT_API int ReadByte(TavoFile& file, unsigned char& value);

}  // namespace vemra
