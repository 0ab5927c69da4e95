#include "Support/platform/Thread.h"

#include <process.h>
#include <windows.h>

#include "Support/platform/Parking.h"

namespace vemra::platform {

struct Thread::State {
  // The system forgets a resume that comes before the suspension: it is repeated until the thread
  // has been suspended by then, or has gone on without.
  void Wake() const {
    while (parking.IsResumed() && ::ResumeThread(handle) == 0) ::SwitchToThread();
  }

  Parking parking{/*isParked=*/true};
  Work work = nullptr;
  void* argument = nullptr;
  HANDLE handle = nullptr;

  static unsigned __stdcall Main(void* state);
};

namespace {

void SleepCurrent() {
  ::SuspendThread(::GetCurrentThread());
}

}  // namespace

unsigned __stdcall Thread::State::Main(void* argument) {
  State& self = *static_cast<State*>(argument);
  self.parking.Stay(SleepCurrent);
  self.work(self.argument);
  return 0;
}

Thread::Thread() : state_(new State) {}

Thread::~Thread() {
  if (state_->handle == nullptr) return;
  // One that has not ended yet ends in its own time, inside the system.
  if (!WaitForEnd(Deadline(0))) {
    static_cast<void>(state_.release());
  } else {
    ::CloseHandle(state_->handle);
  }
}

bool Thread::Create(Work work, void* argument) {
  state_->work = work;
  state_->argument = argument;
  const std::uintptr_t handle =
      ::_beginthreadex(nullptr, 0, State::Main, state_.get(), CREATE_SUSPENDED, nullptr);
  if (handle == 0) return false;
  state_->handle = reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr)
  return true;
}

std::uint32_t Thread::GetHandle() const {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(state_->handle));
}

void Thread::Resume() {
  state_->parking.Unpark([this] { state_->Wake(); });
}

void Thread::Suspend() {
  state_->parking.Park(SleepCurrent);
}

bool Thread::WaitForEnd(const Deadline& deadline) {
  return ::WaitForSingleObject(state_->handle, deadline.GetMillisecondsLeft()) == WAIT_OBJECT_0;
}

void Thread::Terminate() {
  constexpr std::uint32_t kLimit = 1000;  // milliseconds
  ::TerminateThread(state_->handle, 0);
  WaitForEnd(Deadline(kLimit));
}

}  // namespace vemra::platform
