#pragma once

#include <cstdio>
#include <initializer_list>
#include <mutex>
#include <string>
#include <string_view>

#include "Support/foundation/DateTime.h"
#include "Support/foundation/File.h"

namespace vemra {

// The text file of dated lines that the log and the trace write. It is created when it is missing,
// appended to otherwise, and denied to other writers while it is open.
//
// Any thread may write. A line goes to the system in one write, at the file's end, before the call
// returns; so it is never torn, and never lost with the process.
class LineFile {
 public:
  // path is in the Windows form. Raises std::system_error when the file cannot be opened.
  explicit LineFile(const std::string& path);
  ~LineFile();
  LineFile(const LineFile&) = delete;
  LineFile& operator=(const LineFile&) = delete;

  const std::string& GetPath() const { return file_.GetPath(); }

  // Writes "<date> <time> ", the parts and a line end; date and time are local and as "%x %X" gives
  // them in the C locale: "03/07/24 09:05:03". A line for which the disk has no room is lost.
  void WriteLine(std::initializer_list<std::string_view> parts);

 private:
  void UpdateStamp();

  std::mutex mutex_;
  TavoFile file_;
  std::FILE* stream_ = nullptr;  // over file_, unbuffered, owned
  DateTime stamped_;
  std::string stamp_;  // of that second, with the blank after it
  std::string line_;   // its room is used again for every line
};

}  // namespace vemra
