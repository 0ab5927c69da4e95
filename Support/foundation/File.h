#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "Support/Export.h"

namespace vemra {

// An open file, always binary. Used by one thread at a time. Paths are in the Windows form on both
// systems. Every failure of the system raises std::system_error whose text names the path.
class SUPPORT_API TavoFile {
 public:
  enum class Access { kRead, kWrite, kReadWrite };
  enum class Creation {
    kOpenExisting,    // fails when the file is missing
    kOpenOrCreate,    // keeps what an existing file holds
    kCreateTruncate,  // empties an existing file
  };
  // What other openers are refused while this file is open. It holds between threads, processes
  // and, where the file system has working locks, computers, and ends with its holder.
  enum class Share { kAll, kDenyWrite, kDenyRead, kDenyReadWrite };
  enum class Origin { kBegin, kCurrent, kEnd };

  TavoFile();  // nothing open
  TavoFile(const std::string& path, Access access, Creation creation, Share share = Share::kAll);
  ~TavoFile();  // closes
  TavoFile(TavoFile&& other) noexcept;
  TavoFile& operator=(TavoFile&& other) noexcept;
  TavoFile(const TavoFile&) = delete;
  TavoFile& operator=(const TavoFile&) = delete;

  void Open(const std::string& path, Access access, Creation creation, Share share = Share::kAll);
  void Close();
  bool IsOpen() const;
  const std::string& GetPath() const;

  // Returns the bytes read, fewer than size only at the end of the file.
  std::size_t Read(void* buffer, std::size_t size);
  // Writes all of it.
  void Write(const void* data, std::size_t size);
  // Returns the new position, in bytes from the start.
  std::int64_t Seek(std::int64_t offset, Origin origin);
  std::int64_t GetLength();
  void SetLength(std::int64_t length);
  // Waits until the system has stored what was written.
  void Sync();

  // A stdio stream over the same open file, sharing its position and its share mode. mode as for
  // fopen. The stream has a descriptor of its own: closing it leaves this file open, and the
  // caller closes it before or after this file. Null when the system cannot make one.
  std::FILE* OpenStream(const char* mode);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace vemra
