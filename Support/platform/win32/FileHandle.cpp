#include "Support/platform/FileHandle.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace vemra::platform {
namespace {

using Access = TavoFile::Access;
using Creation = TavoFile::Creation;
using Share = TavoFile::Share;

HANDLE AsHandle(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr): came from one
}

DWORD AccessFlags(Access access) {
  constexpr DWORD kFlags[] = {GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE};
  return kFlags[static_cast<int>(access)];
}

DWORD CreationFlags(Creation creation) {
  constexpr DWORD kFlags[] = {OPEN_EXISTING, OPEN_ALWAYS, CREATE_ALWAYS};
  return kFlags[static_cast<int>(creation)];
}

DWORD ShareFlags(Share share) {
  constexpr DWORD kFlags[] = {FILE_SHARE_READ | FILE_SHARE_WRITE, FILE_SHARE_READ, FILE_SHARE_WRITE,
                              0};
  return kFlags[static_cast<int>(share)];
}

// The descriptor flags that go with a mode for fopen.
int DescriptorFlags(const char* mode) {
  int flags = std::strchr(mode, 't') != nullptr ? _O_TEXT : _O_BINARY;
  if (mode[0] == 'a') flags |= _O_APPEND;
  if (mode[0] == 'r' && std::strchr(mode, '+') == nullptr) flags |= _O_RDONLY;
  return flags;
}

// ReadFile and WriteFile take at most this much at once.
constexpr std::size_t kMaxTransfer = 0x40000000;

}  // namespace

bool FileHandle::Open(const std::string& path, Access access, Creation creation, Share share) {
  Close();
  const HANDLE handle = ::CreateFileA(path.c_str(), AccessFlags(access), ShareFlags(share), nullptr,
                                      CreationFlags(creation), FILE_ATTRIBUTE_NORMAL, nullptr);
  handle_ = reinterpret_cast<std::intptr_t>(handle);
  return IsOpen();
}

void FileHandle::Close() {
  if (handle_ != kNone) ::CloseHandle(AsHandle(handle_));
  handle_ = kNone;
}

bool FileHandle::Read(void* buffer, std::size_t size, std::size_t* read) {
  *read = 0;
  while (*read < size) {
    const auto wanted = static_cast<DWORD>(std::min(size - *read, kMaxTransfer));
    DWORD got = 0;
    if (!::ReadFile(AsHandle(handle_), static_cast<char*>(buffer) + *read, wanted, &got, nullptr)) {
      return false;
    }
    if (got == 0) break;
    *read += got;
  }
  return true;
}

bool FileHandle::Write(const void* data, std::size_t size) {
  const char* from = static_cast<const char*>(data);
  while (size > 0) {
    DWORD written = 0;
    if (!::WriteFile(AsHandle(handle_), from, static_cast<DWORD>(std::min(size, kMaxTransfer)),
                     &written, nullptr)) {
      return false;
    }
    from += written;
    size -= written;
  }
  return true;
}

bool FileHandle::Seek(std::int64_t offset, TavoFile::Origin origin, std::int64_t* position) {
  constexpr DWORD kOrigins[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
  LARGE_INTEGER distance{};
  LARGE_INTEGER result{};
  distance.QuadPart = offset;
  if (!::SetFilePointerEx(AsHandle(handle_), distance, &result,
                          kOrigins[static_cast<int>(origin)])) {
    return false;
  }
  *position = result.QuadPart;
  return true;
}

bool FileHandle::GetLength(std::int64_t* length) {
  LARGE_INTEGER size{};
  if (!::GetFileSizeEx(AsHandle(handle_), &size)) return false;
  *length = size.QuadPart;
  return true;
}

bool FileHandle::SetLength(std::int64_t length) {
  FILE_END_OF_FILE_INFO end{};
  end.EndOfFile.QuadPart = length;
  return ::SetFileInformationByHandle(AsHandle(handle_), FileEndOfFileInfo, &end, sizeof end) != 0;
}

bool FileHandle::Sync() {
  return ::FlushFileBuffers(AsHandle(handle_)) != 0;
}

std::FILE* FileHandle::OpenStream(const char* mode) {
  const HANDLE process = ::GetCurrentProcess();
  HANDLE copy = nullptr;
  if (handle_ == kNone) {  // which also stands for the process itself
    ::SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
  }
  if (!::DuplicateHandle(process, AsHandle(handle_), process, &copy, 0, FALSE,
                         DUPLICATE_SAME_ACCESS)) {
    return nullptr;
  }
  const int descriptor =
      ::_open_osfhandle(reinterpret_cast<std::intptr_t>(copy), DescriptorFlags(mode));
  if (descriptor < 0) {
    ::CloseHandle(copy);
    ::SetLastError(ERROR_TOO_MANY_OPEN_FILES);
    return nullptr;
  }
  std::FILE* const stream = ::_fdopen(descriptor, mode);
  if (stream == nullptr) ::_close(descriptor);
  return stream;
}

}  // namespace vemra::platform
