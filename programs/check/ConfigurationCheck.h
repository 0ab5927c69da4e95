#pragma once

#include "Support/definition/FileCFG.h"
#include "Support/definition/FileIDX.h"
#include "programs/check/Report.h"
#include "programs/check/SettingsText.h"

namespace vemra::check {

// Reports what the file types, the schedule and the path map of a configuration say that has no
// effect. fileTypes and configuration are what was loaded from the text.
void CheckFileTypes(const CTavoFileIDX& fileTypes, const SettingsText& text, FileReport& report);
void CheckSchedule(const CTavoFileCFG& configuration, const SettingsText& text, FileReport& report);
void CheckPathMap(const SettingsText& text, FileReport& report);

}  // namespace vemra::check
