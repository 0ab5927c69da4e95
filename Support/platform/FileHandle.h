#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>

#include "Support/foundation/File.h"

namespace vemra::platform {

// The system's side of TavoFile, with the same words for access, creation, sharing and origin.
// Used by one thread at a time. An operation on a handle that is not open fails.
class FileHandle {
 public:
  FileHandle() = default;
  ~FileHandle() { Close(); }
  FileHandle(FileHandle&& other) noexcept : handle_(std::exchange(other.handle_, kNone)) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    if (this != &other) {
      Close();
      handle_ = std::exchange(other.handle_, kNone);
    }
    return *this;
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  // Closes first what is open. kSharingViolation when another opener refuses this access, or has
  // the file open in a way that this share mode would refuse; nothing is truncated then.
  bool Open(const std::string& path, TavoFile::Access access, TavoFile::Creation creation,
            TavoFile::Share share);
  void Close();
  bool IsOpen() const { return handle_ != kNone; }

  // *read is smaller than size only at the end of the file.
  bool Read(void* buffer, std::size_t size, std::size_t* read);
  bool Write(const void* data, std::size_t size);
  bool Seek(std::int64_t offset, TavoFile::Origin origin, std::int64_t* position);
  bool GetLength(std::int64_t* length);
  bool SetLength(std::int64_t length);
  bool Sync();
  // A stream with a handle of its own on the same open file; null on failure.
  std::FILE* OpenStream(const char* mode);

 private:
  static constexpr std::intptr_t kNone = -1;

  std::intptr_t handle_ = kNone;  // a descriptor on Linux, a HANDLE on Windows
};

}  // namespace vemra::platform
