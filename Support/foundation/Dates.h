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
// "09:05:00 07/03/2024": hour (0 to 23), minute and second, then day, month and year, as files keep
// it.
SUPPORT_API std::string FormatStoredTime(DateTime time);

}  // namespace vemra
