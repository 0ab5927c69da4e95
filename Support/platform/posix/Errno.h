#pragma once

#include <cstdint>
#include <string>

namespace vemra::platform {

// The Windows-style code of an errno value.
std::uint32_t ErrorFromErrno(int error);

// Sets the last error and returns false.
bool Fail(std::uint32_t code);
bool FailWithErrno();  // from errno
// From errno after an operation on hostPath: tells a missing file from a missing folder on the way.
bool FailWithErrno(const std::string& hostPath);

}  // namespace vemra::platform
