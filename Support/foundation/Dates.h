#pragma once

#include <string>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"

// Date-times as text, in local time. Safe from any thread.
namespace vemra {

// "03/07/2024": month, day, year.
SUPPORT_API void GetDateString(DateTime time, std::string& out);
// "03/07/2024  09:05": two blanks, then hour (0 to 23) and minute.
SUPPORT_API void GetDateTimeString(DateTime time, std::string& out);

}  // namespace vemra
