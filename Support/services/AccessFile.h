#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/foundation/File.h"
#include "Support/services/AccessEntry.h"

namespace vemra {

// The access file of a database, open: while it is, every other opener that wants to write is
// denied, in this process, in others and on other computers. So whoever has it open keeps it for
// one read and one write only. TavoDBAccess takes and releases access through it; this class is
// for those who look after the file. Used by one thread at a time.
//
// The text file has one line for each holder. A line that begins with ";" is a comment. Line ends
// are the system's; both kinds are read on both systems.
class SUPPORT_API AccessFile {
 public:
  // The path is in the Windows form. Nothing is open yet.
  explicit AccessFile(const std::string& path) : path_(path) {}

  // Opens the file, and creates it when it is missing. While another opener denies it, waits
  // 1000 ms and tries again, up to five times in all with a wait after each. Returns 0 after the
  // fifth with *error unchanged (kept: programs tell a busy file from a failure by that), and after
  // any other failure with *error "PATH: REASON.".
  int Open(std::string* error);
  // The same, for reading only: writes nothing, and a missing file is a failure.
  int OpenToLook(std::string* error);
  bool IsOpen() const { return file_.IsOpen(); }

  // Hands each line that is no comment, with its line end, to take, which returns 0 when the line
  // is not valid. Ends at the first failure: returns 0 with *error "Line N is too long." (more than
  // 98 characters, or no line end), "Line N is invalid." or "PATH: REASON.". Lines count from 1,
  // comments included; a comment of more than 98 characters goes on in the next line.
  int ReadLines(const std::function<int(const char* line)>& take, std::string* error);

  // Replaces the whole text by these lines, in this order. A process that ends at any moment leaves
  // whole lines, and of every holder that is in both texts a line. Returns 0 with *error
  // "PATH: REASON." when the system fails; the file then holds what it held, where the system still
  // can. Call it after ReadLines.
  int Write(const std::vector<AccessEntry>& entries, std::string* error);

 private:
  int Open(TavoFile::Access access, TavoFile::Creation creation, std::string* error);
  void Replace(const std::string& text);

  std::string path_;
  TavoFile file_;
  std::string text_;  // the file's bytes, as last read or written
};

}  // namespace vemra
