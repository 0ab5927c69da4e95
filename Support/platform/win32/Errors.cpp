#include "Support/platform/Errors.h"

#include <windows.h>

namespace vemra::platform {

std::uint32_t GetLastErrorCode() {
  return ::GetLastError();
}

void SetLastErrorCode(std::uint32_t code) {
  ::SetLastError(code);
}

std::string GetErrorText(std::uint32_t code) {
  char* text = nullptr;
  const DWORD length = ::FormatMessageA(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<char*>(&text), 0,
      nullptr);
  std::string result(text == nullptr ? "" : text, length);
  ::LocalFree(text);
  result.erase(result.find_last_not_of(" \r\n") + 1);
  return result;
}

void WriteDebugOutput(const char* text) {
  ::OutputDebugStringA(text);
}

}  // namespace vemra::platform
