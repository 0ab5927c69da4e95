#pragma once

#include <string_view>

#include "Support/Export.h"

namespace vemra {

// 1 when name matches pattern, else 0. Bytes are compared as they are, case matters. "?" stands for
// one character and "*" for 0 to 1000; stars with no literal character between them, such as "**"
// or "*?*", share one limit of 1000. An empty pattern matches the empty name only.
// Safe from any thread. The time grows at most with the product of the two lengths.
SUPPORT_API int MatchWildcard(std::string_view pattern, std::string_view name);

}  // namespace vemra
