#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "Support/Export.h"
#include "Support/foundation/File.h"

namespace vemra {

class LineBlock;

// Reads a sectioned text file (a profile) line by line, with one line of look-ahead: an operation
// that does not find what it was asked for leaves the line pending, so that the caller can ask for
// something else. Results are 1 or 0; a failed read leaves the caller's variable unchanged. Nothing
// throws. Used by one thread at a time.
//
// - A line has at most 255 bytes; a longer one is taken as several lines. It ends at a NUL byte in
//   it, and trailing carriage returns and line feeds do not count.
// - Blank lines and lines whose first non-blank character is ";" are skipped.
// - "[Title]" begins at the start of the line; only white space may follow it.
// - "key=value" begins at the start of the line, with "=" right after the key.
// - Titles and keys compare byte by byte.
// White space is blank, tab, line feed, vertical tab, form feed and carriage return. A file that
// the reader opens itself is read as bytes on both systems, so 0x1A does not end it.
class SUPPORT_API CTavoProfileReader {
 public:
  CTavoProfileReader();  // nothing open
  explicit CTavoProfileReader(std::FILE* stream);
  explicit CTavoProfileReader(const std::string& path);
  explicit CTavoProfileReader(TavoFile& file);
  ~CTavoProfileReader();  // closes
  CTavoProfileReader(const CTavoProfileReader&) = delete;
  CTavoProfileReader& operator=(const CTavoProfileReader&) = delete;

  // Opening an open reader neither closes the old stream nor drops a pending line: close first.

  // Reads from the caller's stream, which stays open and is never read beyond the line in hand.
  // 0 when it is null.
  int Open(std::FILE* stream);
  // Path in the Windows form; 0 when the file cannot be opened for reading.
  int Open(const std::string& path);
  // Reads the same open file from its present position, and leaves it open. The reader reads
  // ahead, so the file's position afterwards is unspecified. 0 when no stream can be made.
  int Open(TavoFile& file);
  int IsOpen() const { return stream_ != nullptr; }
  void Close();

  // Consumes the pending line when it is the section title, else leaves it.
  int ReadSectionTitle(const std::string& title);
  // Moves on to the next section title, which may be the pending line, and leaves it pending.
  int GotoNextSection();
  // Consumes "key=" and a decimal number, with white space allowed on both sides of the number.
  // A number outside 32 bits fails.
  int ReadInt(const std::string& key, std::int32_t& value);
  // Consumes "key=" and the rest of the line as it stands; it may be empty.
  int ReadString(const std::string& key, std::string& value);
  // Gives the pending line (0 for wholeLine: from the position, which is its start) and does NOT
  // consume it, so that the caller can look before deciding who reads it: GotoNextLine does.
  int ReadLine(std::string& text, int wholeLine);
  // Consumes the pending line.
  void GotoNextLine();
  // The number of the pending line, else of the last one, from 1; 0 before the first. Skipped lines
  // count, and each of the lines that a longer one was taken as.
  std::uint32_t GetLineNumber() const { return lineNumber_; }

 protected:
  // Makes a line pending, the one that already is or the next meaningful one. Once it has failed at
  // the end of the file, it goes on failing.
  int ReadNextLine();
  // Advance over what matches. The text form may advance before it fails.
  int Match(char c);
  int Match(const char* text);
  // Advances over white space; fails unless that reaches the end of the line.
  int MatchSpaces();
  // Goes back to the start of the line and returns 0.
  int FailAndReset();
  void AllocBuffer();

 private:
  static constexpr std::size_t kLineLimit = 255;  // bytes

  int MatchKey(const std::string& key);
  int Attach(TavoFile& file);
  void DropBlock();
  int FillBuffer();
  int ReadPhysicalLine();

  std::FILE* stream_ = nullptr;
  int ownsStream_ = 0;  // 1 when the reader made the stream itself
  std::unique_ptr<char[]> buffer_;
  std::uint32_t position_ = 0;
  std::uint32_t lineStart_ = 0;  // where a failed match goes back to
  std::uint32_t lineNumber_ = 0;
  std::string path_;
  char* line_ = nullptr;  // the current line, in the buffer or in the block
  std::size_t lineLength_ = 0;
  std::unique_ptr<LineBlock> block_;  // for a stream that the reader made itself
};

}  // namespace vemra
