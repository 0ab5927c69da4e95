#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Support/foundation/RegistryKey.h"

namespace vemra {

// The text form of the registry editor, by which settings move between stores and systems.
//
// The file names its form in the first line: "Windows Registry Editor Version 5.00" in UTF-16 with
// a byte order mark, or "REGEDIT4" in the 8-bit characters of the system. What the store holds is
// taken for UTF-8 in the first form and copied as it is in the second. A file of the first form
// that is not in UTF-16 is read as UTF-8.

struct RegistryValueChange {
  RegistryValue value;
  bool isDeleted = false;  // then only the name counts
};

struct RegistryChange {
  std::string key;         // below the root of the store; empty: the root itself
  bool isDeleted = false;  // with all below it; then there are no values
  std::vector<RegistryValueChange> values;
};

enum class RegistryForm { kUnicode, kAnsi };

// What is wrong with a file or, with line 0, with what was to become one.
class RegistryFileError : public std::runtime_error {
 public:
  RegistryFileError(std::size_t line, const std::string& text)
      : std::runtime_error(text), line_(line) {}
  std::size_t GetLine() const { return line_; }  // from 1

 private:
  std::size_t line_;
};

// The changes in the order of the file. Throws RegistryFileError; a key outside the store's root is
// an error too.
std::vector<RegistryChange> ParseRegistryFile(std::string_view bytes);

// The bytes of a file. Throws RegistryFileError for a text that the form cannot say.
std::string FormatRegistryFile(const std::vector<RegistryChange>& changes, RegistryForm form);

// "01,ff,20"
std::string FormatHexBytes(std::string_view bytes);

}  // namespace vemra
