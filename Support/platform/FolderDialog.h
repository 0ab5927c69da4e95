#pragma once

#include <string>

namespace vemra::platform {

// The system's own folder picker. False when there is none, when the user cancels, and when what
// was chosen has no path. owner is the system's window handle or null.
bool ShowFolderDialog(void* owner, const char* title, std::string* folder);

}  // namespace vemra::platform
