#pragma once

#include <cstdint>
#include <string>

// Files and folders by path. All paths are in the Windows form.
namespace vemra::platform {

// Tells one file or folder from every other that exists at the same time, whatever path led to it.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t file = 0;

  bool operator==(const FileIdentity&) const = default;
};

// What changes when a file is written to or replaced.
struct FileStamp {
  FileIdentity identity;
  std::int64_t size = 0;      // bytes
  std::int64_t modified = 0;  // in the system's own fine-grained unit; only good for comparing

  bool operator==(const FileStamp&) const = default;
};

// What the system ends a line of a text file with.
extern const char kLineEnd[];

bool FileExists(const std::string& path);  // a folder is not a file
bool FolderExists(const std::string& path);
bool GetFileStamp(const std::string& path, FileStamp* stamp);

// The parent must exist. kAlreadyExists when something bears the name.
bool MakeFolder(const std::string& path);
// The folder must be empty.
bool RemoveFolder(const std::string& path);
// kSharingViolation when a TavoFile, in whatever process, has the file open.
bool RemoveFile(const std::string& path);
// Replaces an existing target. Contents and modification time are copied. kSharingViolation when
// both are the same file or one of them is held by another opener; a copy that fails midway
// leaves no target.
bool CopyFileOver(const std::string& from, const std::string& to);

}  // namespace vemra::platform
