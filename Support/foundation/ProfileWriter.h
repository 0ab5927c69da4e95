#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "Support/Export.h"
#include "Support/foundation/File.h"

namespace vemra {

// Writes a sectioned text file (a profile) as CTavoProfileReader reads it. A file that the writer
// opens itself gets the system's line ends. Results are 1 or 0; nothing throws. Used by one thread
// at a time. Values are written as they stand, without quoting or escaping, up to a NUL byte.
class SUPPORT_API CTavoProfileWriter {
 public:
  CTavoProfileWriter() = default;  // nothing open
  explicit CTavoProfileWriter(std::FILE* stream);
  explicit CTavoProfileWriter(const std::string& path);
  explicit CTavoProfileWriter(TavoFile& file);
  ~CTavoProfileWriter();  // closes
  CTavoProfileWriter(const CTavoProfileWriter&) = delete;
  CTavoProfileWriter& operator=(const CTavoProfileWriter&) = delete;

  // Opening an open writer does not close the old stream: close first.

  // Writes to the caller's stream, which stays open; 0 when it is null.
  int Open(std::FILE* stream);
  // Creates the file or empties it. Path in the Windows form.
  int Open(const std::string& path);
  // Empties the open file and writes to it from its start; it stays open.
  int Open(TavoFile& file);
  int IsOpen() const { return stream_ != nullptr; }
  // 1 when everything written since the stream was opened has been handed to the system.
  int Close();

  // The following need an open stream. They give 0 when the stream reports a failure, which a
  // buffered stream may do as late as at Close.

  // An empty line, then "[title]".
  int WriteSectionTitle(const std::string& title);
  int WriteInt(const std::string& key, std::int32_t value);
  int WriteString(const std::string& key, const std::string& value);
  int WriteNewline();
  int Format(const char* format, ...) SUPPORT_PRINTF(2, 3);

 private:
  std::FILE* stream_ = nullptr;
  int ownsStream_ = 0;  // 1 when the writer made the stream itself
};

}  // namespace vemra
