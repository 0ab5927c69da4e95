#pragma once

#include "programs/check/KeyTable.h"
#include "programs/check/Report.h"
#include "programs/check/SettingsText.h"
#include "programs/check/ValueCheck.h"

namespace vemra::check {

// Reports what a settings file holds against the table of its sections and keys: names that are not
// known, with the nearest one that is; repeated ones, of which the first counts; numbered ones
// that are not read, or missing; values that are wrong.
void CheckAgainstTable(const SettingsText& text, FileRule rule, const Surroundings& surroundings,
                       FileReport& report);

}  // namespace vemra::check
