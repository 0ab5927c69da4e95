#pragma once

#include "Support/definition/FileCFG.h"
#include "programs/check/Report.h"
#include "programs/check/SettingsText.h"

namespace vemra::check {

// Reports what the schedule and the path map of a configuration say that has no effect.
// configuration is what was loaded from the text.
void CheckSchedule(const CTavoFileCFG& configuration, const SettingsText& text, FileReport& report);
void CheckPathMap(const SettingsText& text, FileReport& report);

}  // namespace vemra::check
