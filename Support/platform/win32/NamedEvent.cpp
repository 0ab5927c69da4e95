#include "Support/platform/NamedEvent.h"

#include <windows.h>

namespace vemra::platform {
namespace {

HANDLE AsHandle(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr): came from one
}

}  // namespace

bool NamedEvent::Create(const std::string& name) {
  Close();
  const HANDLE event =
      ::CreateEventA(nullptr, /*bManualReset=*/TRUE, /*bInitialState=*/FALSE, name.c_str());
  if (event == nullptr) return false;
  handle_ = reinterpret_cast<std::intptr_t>(event);
  created_ = true;
  return true;
}

bool NamedEvent::Open(const std::string& name) {
  Close();
  const HANDLE event = ::OpenEventA(EVENT_MODIFY_STATE, /*bInheritHandle=*/FALSE, name.c_str());
  if (event == nullptr) return false;
  handle_ = reinterpret_cast<std::intptr_t>(event);
  return true;
}

void NamedEvent::Close() {
  if (handle_ != kNone) ::CloseHandle(AsHandle(handle_));
  handle_ = kNone;
  created_ = false;
}

bool NamedEvent::Set() {
  return ::SetEvent(AsHandle(handle_)) != 0;
}

bool NamedEvent::IsSet() const {
  return created_ && ::WaitForSingleObject(AsHandle(handle_), 0) == WAIT_OBJECT_0;
}

}  // namespace vemra::platform
