#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vemra {

// UTF-16 in bytes, low byte first and without a byte order mark, and back. No value when the text
// is not well formed: a byte or a surrogate without its partner, or what is no UTF-8.
std::optional<std::string> Utf16ToUtf8(std::string_view bytes);
std::optional<std::string> Utf8ToUtf16(std::string_view text);

}  // namespace vemra
