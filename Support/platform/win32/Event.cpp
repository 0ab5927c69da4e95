#include "Support/platform/Event.h"

#include <windows.h>

namespace vemra::platform {

struct Event::State {
  HANDLE handle;
};

Event::Event(bool isSignalled)
    : state_(new State{::CreateEventA(nullptr, /*bManualReset=*/TRUE, isSignalled, nullptr)}) {}

Event::~Event() {
  if (state_->handle != nullptr) ::CloseHandle(state_->handle);
}

void Event::Set() {
  ::SetEvent(state_->handle);
}

void Event::Reset() {
  ::ResetEvent(state_->handle);
}

std::uint32_t Event::Wait(std::uint32_t milliseconds) const {
  return ::WaitForSingleObject(state_->handle, milliseconds);
}

}  // namespace vemra::platform
