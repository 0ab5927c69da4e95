#include "Support/foundation/FolderPicker.h"

#include <cstring>
#include <mutex>
#include <utility>

#include "Support/platform/FolderDialog.h"

namespace vemra {
namespace {

std::mutex pickerMutex;
FolderPicker currentPicker;

int PickFolder(void* owner, const char* title, std::string& folder) {
  FolderPicker picker;
  {
    const std::lock_guard<std::mutex> lock(pickerMutex);
    picker = currentPicker;  // called outside the lock, which it may want itself
  }
  if (picker) return picker(owner, title, folder);
  return platform::ShowFolderDialog(owner, title, &folder) ? 1 : 0;
}

}  // namespace

int BrowseForFolder(void* owner, char* buffer, const char* title) {
  std::string folder;
  if (PickFolder(owner, title, folder) == 0 || folder.size() >= kFolderPathSize) return 0;
  std::memcpy(buffer, folder.c_str(), folder.size() + 1);
  return 1;
}

void SetFolderPicker(FolderPicker picker) {
  const std::lock_guard<std::mutex> lock(pickerMutex);
  currentPicker = std::move(picker);
}

}  // namespace vemra
