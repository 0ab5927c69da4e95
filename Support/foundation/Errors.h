#pragma once

#include <cstdint>
#include <string>
#include <system_error>

#include "Support/Export.h"

namespace vemra {

// System error codes are numbered as on Windows on both systems (2 file not found, 3 path not
// found, 5 access denied, 32 sharing violation). On Linux, an error that Windows has no number for
// is 0x20000000 plus the system's own.

// The system's text for a code, in the user's language, without a line end; empty when there is
// none. Safe from any thread.
SUPPORT_API std::string GetErrorMessage(std::uint32_t code);

// The category of every std::system_error that the library raises.
SUPPORT_API const std::error_category& SystemErrorCategory();

// Formats a message for developers and sends it to the debugger (on Linux to the standard error
// output). It is cut to 99 characters. Safe from any thread.
SUPPORT_API void DebugString(const char* format, ...) SUPPORT_PRINTF(1, 2);

}  // namespace vemra
