#include "Support/platform/Paths.h"

#include <windows.h>

#include <algorithm>

#include "Support/foundation/Ascii.h"

namespace vemra::platform {
namespace {

unsigned char Fold(char c) {
  return ToAsciiLower(static_cast<unsigned char>(c));
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
    if (isLead ? a[i] != b[i] : Fold(a[i]) != Fold(b[i])) return false;
    if (!isLead || i + 1 == a.size()) continue;
    ++i;
    if (a[i] != b[i]) return false;
  }
  return true;
}

}  // namespace vemra::platform
