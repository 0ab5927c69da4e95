#include "Support/platform/Process.h"

#include <windows.h>

namespace vemra::platform {
namespace {

constexpr DWORD kPathSize = 32768;  // the system's longest path, the terminator included

// A system call that fills a buffer with a path and returns its length.
template <typename Fill>
std::string ReadPath(Fill fill) {
  std::string path(kPathSize, '\0');
  const DWORD length = fill(path.data());
  path.resize(length < kPathSize ? length : 0);
  return path;
}

}  // namespace

std::string GetProgramFileName() {
  return ReadPath([](char* path) { return ::GetModuleFileNameA(nullptr, path, kPathSize); });
}

std::string GetCurrentFolder() {
  return ReadPath([](char* path) { return ::GetCurrentDirectoryA(kPathSize, path); });
}

std::string GetTempFolder() {
  return ReadPath([](char* path) { return ::GetTempPathA(kPathSize, path); });
}

std::uint32_t GetThreadId() {
  return ::GetCurrentThreadId();
}

}  // namespace vemra::platform
