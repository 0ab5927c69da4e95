#pragma once

#include <string>

#include "Support/foundation/DateTime.h"

namespace vemra::commands {

// For people, in local time: 2024-03-07 09:05:03.
std::string LocalText(DateTime time);
// For programs: 2024-03-07T08:05:03Z.
std::string UtcText(DateTime time);

}  // namespace vemra::commands
