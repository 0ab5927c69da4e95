#include "Support/platform/FolderDialog.h"

#include <windows.h>
// The shell's headers build on the one above.
#include <shlobj.h>

namespace vemra::platform {

bool ShowFolderDialog(void* owner, const char* title, std::string* folder) {
  BROWSEINFOA dialog{};
  dialog.hwndOwner = static_cast<HWND>(owner);
  dialog.lpszTitle = title;
  const PIDLIST_ABSOLUTE chosen = ::SHBrowseForFolderA(&dialog);
  if (chosen == nullptr) return false;
  char path[MAX_PATH] = "";
  const bool hasPath = ::SHGetPathFromIDListA(chosen, path) != 0;
  ::CoTaskMemFree(chosen);
  if (hasPath) *folder = path;
  return hasPath;
}

}  // namespace vemra::platform
