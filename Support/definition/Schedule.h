#pragma once

#include <cstdint>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"

namespace vemra {

enum class SCHEDULE : std::int32_t { kNone = 0, kWeekly = 1, kMonthly = 2 };

// When the next scheduled update is due, after the library's clock, in local time. Returns 1 and
// the result, or 0 without a schedule (no or an unknown unit, an empty mask).
//
// Weekly: mask bit 0 is Monday, bit 6 Sunday; time is the time of day, its days are ignored. A time
// equal to now counts as past. A result in this week is now plus the difference in elapsed seconds,
// also across a change of the clocks; one in the next week counts from today's midnight.
// Monthly: mask bit 0 is January, bit 11 December; time is the day of the month in days, plus the
// time of day. A day that the month does not have runs over into the next month.
SUPPORT_API int GetNextUpdateTime(SCHEDULE unit, std::uint16_t mask, TimeSpan time,
                                  DateTime& result);

}  // namespace vemra
