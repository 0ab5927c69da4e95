#pragma once

#include <string>
#include <string_view>

namespace vemra::platform {

// See Support/foundation/HostPath.h. An empty result of ToHostPath has set the last error.
std::string ToHostPath(const std::string& path);
std::string FromHostPath(const std::string& hostPath);

// Whether two file names are the same but for the case of ASCII letters. A letter's byte inside a
// character of several bytes is compared as it stands.
bool IsSameName(std::string_view a, std::string_view b);

}  // namespace vemra::platform
