#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"
#include "Support/text/LangPack.h"

namespace vemra {

class CTavoProfileReader;

// Reads language pack files: a profile with the sections [Flags], [Sort], [Index] and
// [Query Language]; any other section is skipped. A section may stand more than once; each is
// applied on top of what the earlier ones set.
//
//   byte   'x' (three characters, x any but NUL) or a decimal number from 1 to 255
//   range  byte, or byte-byte; first above last is a range without bytes
//
//   [Flags]  range=letters   sets the flags: each A adds 3 (letter), each D adds 4 (digit)
//   [Sort]   range=number    sets the weights; += adds, -= subtracts, ~= takes the weight from the
//                            number. Weights wrap at 16 bits. "65-=5" is byte 65 and the operator.
//   [Index]  range=range     folds the first range to the second; equal lengths
//   [Query Language]         And=, Or= and Not=, in any order
//
// Numbers are read by scanf's rules: leading white space, an optional sign, and for weights
// whatever follows the digits is ignored.
class SUPPORT_API LangPackReader {
 public:
  virtual ~LangPackReader() = default;

  // Applies the file to tables. Returns 1 when the file could be opened, else 0.
  int Read(const std::string& path, LangPackTables& tables);

 protected:
  // A line that does not follow its section's syntax and was skipped, and its number in the file,
  // from 1. Does nothing: a pack with a bad line still serves, and who writes packs overrides this.
  virtual void OnBadLine(const std::string& line, std::uint32_t number);

 private:
  using LineReader = bool (*)(const char* line, LangPackTables& tables);

  void ReadLines(CTavoProfileReader& file, LineReader read, LangPackTables& tables);
  void ReadQueryWords(CTavoProfileReader& file, LangPackTables& tables);
};

}  // namespace vemra
