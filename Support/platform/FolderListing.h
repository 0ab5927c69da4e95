#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "Support/platform/Files.h"

namespace vemra::platform {

struct FolderEntry {
  std::string name;
  bool isFolder = false;  // a link counts as what it leads to
  bool isLink = false;    // removing the entry leaves what it leads to alone
};

// Lists one folder, reading it piece by piece as the entries are asked for, in the system's order.
// "." and ".." are left out, and so are names that a path in the Windows form cannot say.
class FolderListing {
 public:
  FolderListing() = default;
  ~FolderListing() { Close(); }
  FolderListing(FolderListing&& other) noexcept
      : handle_(std::exchange(other.handle_, 0)), identity_(other.identity_) {}
  FolderListing& operator=(FolderListing&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(identity_, other.identity_);
    return *this;
  }
  FolderListing(const FolderListing&) = delete;
  FolderListing& operator=(const FolderListing&) = delete;

  // Lists path + "\", so an empty path means the root of the current drive.
  bool Open(const std::string& path);
  void Close();
  bool IsOpen() const { return handle_ != 0; }
  // Equal for two open listings exactly when they list one folder: how a walk sees that a link has
  // led it back to a folder that it is already in.
  const FileIdentity& GetIdentity() const { return identity_; }
  // kNoMoreFiles at the end.
  bool Next(FolderEntry* entry);

 private:
  std::intptr_t handle_ = 0;  // a DIR* on Linux; on Windows a state of the implementation
  FileIdentity identity_;
};

}  // namespace vemra::platform
