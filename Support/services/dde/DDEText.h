#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace vemra {

// The text in a block: up to its NUL, or all of it where it has none. Blocks may be larger than
// what was stored in them.
inline std::string GetDDEText(const void* data, std::size_t size) {
  if (data == nullptr) return {};
  const char* const first = static_cast<const char*>(data);
  return {first, std::find(first, first + size, '\0')};
}

}  // namespace vemra
