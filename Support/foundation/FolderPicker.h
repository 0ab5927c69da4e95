#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "Support/Export.h"

namespace vemra {

// Bytes of the buffer that BrowseForFolder fills, the terminator included.
inline constexpr std::size_t kFolderPathSize = 260;

// Lets the user pick a folder and writes its path in the Windows form, NUL-terminated, into buffer,
// which holds kFolderPathSize bytes. Non-zero on success; 0, with buffer as it was, when the user
// cancels, when the path is too long for the buffer, and when no picker is there.
// owner is the system's handle of the window that the picker belongs to, or null.
//
// A picker that a user-interface component has set is used on both systems. Without one, Windows
// shows the shell's, and Linux has none. Call it on the thread of the user interface.
SUPPORT_API int BrowseForFolder(void* owner, char* buffer, const char* title);

// Shows the title, writes the chosen folder and returns non-zero, or returns 0. Must not throw.
using FolderPicker = std::function<int(void* owner, const char* title, std::string& folder)>;

// An empty picker takes the last one back. Safe from any thread.
SUPPORT_API void SetFolderPicker(FolderPicker picker);

}  // namespace vemra
