#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "Support/Export.h"
#include "Support/foundation/File.h"

namespace vemra {

// The file dictionary of a database: one fixed-size record for each text number, counted from 1,
// without a header. A record is 263 bytes, little-endian: the file type index (1), the number in
// text (2), the file name (260, padded with zeros; a longer name is cut, without a final zero).
//
// The first operation decides: PutFileName creates the file anew for writing, a read opens it for
// reading; the other kind then fails until the dictionary is opened again. Nothing raises: failure
// is 0, or -1 where the result is a value. Text numbers below 1 and beyond the end fail.
// Used by one thread at a time.
class SUPPORT_API CTavoFileDict {
 public:
  static constexpr std::size_t kRecordBytes = 263;
  static constexpr std::size_t kNameBytes = 260;

  // Names the file and closes any earlier one; the file itself is opened on first use. Returns 1.
  int Open(const std::string& path);
  void Close();

  // Appends the record of the next text number.
  int PutFileName(int fileType, int numInText, const std::string& name);

  int GetFileName(std::int32_t textNumber, std::string& name, int* numInText = nullptr);
  // The stored byte is signed: types above 127 come back negative.
  int GetFileType(std::int32_t textNumber);
  int GetNumInText(std::int32_t textNumber);  // signed 16-bit

 private:
  bool OpenFor(bool reading);
  // Reads size bytes of the text's record, from the offset within it, into the buffer.
  bool ReadRecord(std::int32_t textNumber, std::size_t offset, std::size_t size);

  std::string path_;
  bool reading_ = false;
  TavoFile file_;
  std::array<char, kRecordBytes> record_{};
};

}  // namespace vemra
