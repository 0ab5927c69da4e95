#include "Support/platform/FolderDialog.h"

namespace vemra::platform {

bool ShowFolderDialog(void* /*owner*/, const char* /*title*/, std::string* /*folder*/) {
  return false;  // the system has no picker of its own
}

}  // namespace vemra::platform
