#include "Support/platform/Files.h"

#include <windows.h>

#include "Support/platform/win32/Identity.h"

namespace vemra::platform {
namespace {

DWORD GetAttributes(const std::string& path) {
  return ::GetFileAttributesA(path.c_str());
}

std::int64_t Join(DWORD high, DWORD low) {
  return static_cast<std::int64_t>((std::uint64_t{high} << 32) | low);
}

}  // namespace

bool ReadFileInformation(const std::string& path, BY_HANDLE_FILE_INFORMATION* information) {
  // No access is asked for, so no opener can refuse this; the flag lets folders be opened too.
  const HANDLE handle =
      ::CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  const bool succeeded = ::GetFileInformationByHandle(handle, information) != 0;
  ::CloseHandle(handle);
  return succeeded;
}

FileIdentity IdentityOf(const BY_HANDLE_FILE_INFORMATION& information) {
  return {information.dwVolumeSerialNumber,
          static_cast<std::uint64_t>(Join(information.nFileIndexHigh, information.nFileIndexLow))};
}

const char kLineEnd[] = "\r\n";

bool FileExists(const std::string& path) {
  const DWORD attributes = GetAttributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FolderExists(const std::string& path) {
  const DWORD attributes = GetAttributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool GetFileStamp(const std::string& path, FileStamp* stamp) {
  BY_HANDLE_FILE_INFORMATION information{};
  if (!ReadFileInformation(path, &information)) return false;
  stamp->identity = IdentityOf(information);
  stamp->size = Join(information.nFileSizeHigh, information.nFileSizeLow);
  stamp->modified =
      Join(information.ftLastWriteTime.dwHighDateTime, information.ftLastWriteTime.dwLowDateTime);
  return true;
}

bool MakeFolder(const std::string& path) {
  return ::CreateDirectoryA(path.c_str(), nullptr) != 0;
}

bool RemoveFolder(const std::string& path) {
  return ::RemoveDirectoryA(path.c_str()) != 0;
}

bool RemoveFile(const std::string& path) {
  return ::DeleteFileA(path.c_str()) != 0;
}

bool CopyFileOver(const std::string& from, const std::string& to) {
  return ::CopyFileA(from.c_str(), to.c_str(), FALSE) != 0;
}

}  // namespace vemra::platform
