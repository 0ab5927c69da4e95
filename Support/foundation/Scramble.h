#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"

// Keyed scrambling of buffers and file names, in place. It keeps data from being read by accident
// and protects nothing. Stored data depends on every rule here. Any thread may call; a buffer is
// the caller's alone meanwhile.
namespace vemra {

// Both scrambling functions add (exclusive or) a stream to the 16-bit words of a buffer, so that
// calling them again with the same arguments restores it. The stream repeats the key twice, each
// character c as c ^ m, or as c itself where that is 0; m is the low byte of a * b. It starts again
// when it is used up. The built-in key is "tormaquelvinade".

// length is in bytes; the last one of an odd length stays as it is.
SUPPORT_API void encrypt(void* buffer, std::uint16_t a, std::uint16_t b, std::uint16_t length);

// The buffer is blockCount blocks of 2048 bytes. Block j takes b + j in the place of b, and the
// stream starts again with each block. A block whose b + j has its low 16 bits clear is left as it
// is: kept, stored data depends on it. key is a text that ends with a NUL; null means the built-in
// key, and an empty key scrambles nothing.
SUPPORT_API void OldEncrypt(void* buffer, std::uint16_t a, std::uint16_t b,
                            std::uint16_t blockCount, const char* key);

// Replace the letters of a file name after its first colon; a name without a colon is left as it
// is. The ASCII letters alone change, in step with the characters of the key, which starts again at
// its end; whatever else stands between them takes no character of the key. A letter becomes the
// capital number (k + c) modulo 26, counted from 0, where k and c are the low five bits of the key
// character and of the letter ("A" and "a" are 1).
//
// encrypt_unfilename undoes encrypt_filename, and the other way round. Both turn the letters after
// the colon into capitals, so the case is lost, as file names are compared without it; a name in
// capitals comes back as it was.
SUPPORT_API void encrypt_filename(std::string& name);
SUPPORT_API void encrypt_unfilename(std::string& name);

// The key of the two, for the whole process; an empty one leaves names as they are. Programs that
// exchange names must set the same. Until one is set it is the built-in key.
SUPPORT_API void SetFileNameKey(const std::string& key);

}  // namespace vemra
