#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"

// Helpers for 8-bit text. All are safe from any thread; lengths and indexes are in bytes. White
// space is blank, tab, line feed, vertical tab, form feed and carriage return.
namespace vemra {

// s in double quotes when it holds a character of specials, else s. Quotes in s are not escaped.
SUPPORT_API std::string QuoteString(const std::string& s, const char* specials);
// Always quote + s + quote.
SUPPORT_API std::string QuoteString(const std::string& s, char quote);
// Always open + s + close.
SUPPORT_API std::string QuoteString(const std::string& s, char open, char close);
// s without its first and last character when it is at least two long and both are quote; else s.
SUPPORT_API std::string StripQuotes(const std::string& s, char quote);

// Reads one item of a comma-separated list and moves text past it and past the comma after it.
// - An item in double quotes ends at the next double quote. When there is none, the result is
//   empty and text does not move.
// - Any other item ends at the next comma or at the end. Two commas after it are passed at once,
//   so "a,,b" is a, then b; a third comma is one empty item. This is kept: lists that exist are
//   read so.
// Blanks are not trimmed. text is NUL-terminated.
SUPPORT_API std::string ReadFileName(const char*& text);

// Index of the last occurrence of sub in s; -1 when there is none. An empty sub is found at the
// end of s.
SUPPORT_API int ReverseFind(const std::string& s, const std::string& sub);
// Cuts s to n characters when it is longer. n below 0 counts as 0.
SUPPORT_API void TruncateString(std::string& s, int n);
// Replaces every from by to and returns s.
SUPPORT_API std::string& ReplaceChar(std::string& s, char from, char to);
// Replaces every character that occurs in set by to and returns s.
SUPPORT_API std::string& ReplaceOneOfChars(std::string& s, const char* set, char to);
// Copies src into dest with every run of white space folded to one blank, also at both ends, and
// stops after n characters. dest is left as it was when n is 0 or less. dest may be src.
SUPPORT_API void SmartStrncopy(std::string& dest, const std::string& src, int n);

// The decimal number.
SUPPORT_API std::string NumToCString(std::int32_t number);

}  // namespace vemra
