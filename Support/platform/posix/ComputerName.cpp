#include "Support/platform/ComputerName.h"

#include <limits.h>
#include <unistd.h>

#include <cstdio>

#include "Support/foundation/Ascii.h"
#include "Support/foundation/Signature32.h"
#include "Support/platform/Errors.h"
#include "Support/platform/posix/Errno.h"
#include "Support/platform/posix/HostName.h"

namespace vemra::platform {
namespace {

constexpr std::size_t kMaxLength = 15;
constexpr std::size_t kFingerprintDigits = 4;

// Unlike Windows, Linux lets a host name hold anything. What would end the name where it is written
// between blanks, or make a comment of its line, is replaced.
char ToNameCharacter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (IsAsciiLower(byte)) return static_cast<char>(c - 'a' + 'A');
  return byte <= ' ' || byte == 127 || byte == ';' ? '-' : c;
}

}  // namespace

std::string ComputerNameOf(std::string_view host) {
  std::string name;
  for (const char c : host.substr(0, host.find('.'))) name += ToNameCharacter(c);
  if (name.size() <= kMaxLength) return name;
  char digits[kFingerprintDigits + 1];
  std::snprintf(digits, sizeof digits, "%04X",
                static_cast<unsigned>(signature32(name.c_str())) & 0xFFFFU);
  return name.substr(0, kMaxLength - kFingerprintDigits) + digits;
}

bool ReadComputerName(std::string* name) {
  char host[HOST_NAME_MAX + 1] = "";
  if (::gethostname(host, sizeof host - 1) != 0) return FailWithErrno();
  *name = ComputerNameOf(host);
  return !name->empty() || Fail(kInvalidName);
}

}  // namespace vemra::platform
