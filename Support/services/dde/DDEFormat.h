#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"

namespace vemra {

// The clipboard formats in which data passes, 16-bit numbers. 1 to 12 are the system's standard
// ones; programs agree on others by registering a name.
constexpr std::uint16_t kDDEFormatText = 1;  // ends with a NUL

// "TEXT", "BITMAP" and so on for the standard formats, the name under which any other was
// registered, empty when there is none.
SUPPORT_API std::string GetDDEFormatName(std::uint16_t format);

// The number of a format by its name, the same in all programs of the session; names are the same
// without regard to case. 0 when the name is empty or longer than 255 characters.
SUPPORT_API std::uint16_t RegisterDDEFormat(const std::string& name);

}  // namespace vemra
