#include "Support/platform/Paths.h"

#include <windows.h>

#include <algorithm>

namespace vemra::platform {
namespace {

char ToLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string ToHostPath(const std::string& path) {
  return path;
}

std::string FromHostPath(const std::string& hostPath) {
  std::string path = hostPath;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

bool IsSameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const bool isLead = ::IsDBCSLeadByte(static_cast<BYTE>(a[i])) != 0;
    if (isLead ? a[i] != b[i] : ToLower(a[i]) != ToLower(b[i])) return false;
    if (!isLead || i + 1 == a.size()) continue;
    ++i;
    if (a[i] != b[i]) return false;
  }
  return true;
}

}  // namespace vemra::platform
