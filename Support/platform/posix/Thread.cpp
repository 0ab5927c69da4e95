#include "Support/platform/Thread.h"

#include <pthread.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>

#include "Support/platform/Parking.h"
#include "Support/platform/posix/Futex.h"

namespace vemra::platform {

struct Thread::State {
  void Sleep() { FutexWait(parking.Word(), Parking::kParked, Deadline(kForever)); }
  void End(std::uint32_t how) {
    ended = how;
    FutexWakeAll(&ended);
  }

  Parking parking{/*isParked=*/true};
  Work work = nullptr;
  void* argument = nullptr;
  std::uint32_t handle = 0;
  pthread_t thread{};
  bool isJoined = false;
  std::atomic<std::uint32_t> ended = 0;  // one of the below
  static constexpr std::uint32_t kReturned = 1;
  static constexpr std::uint32_t kTerminated = 2;

  // Of the calling thread, while it can be terminated.
  static thread_local std::atomic<State*> current;

  static void* Main(void* state);
  static void TerminateCurrent(int signal);
  static int TakeEndSignal();
};

thread_local std::atomic<Thread::State*> Thread::State::current = nullptr;

namespace {

int EndSignal() {
  return SIGRTMAX - 2;
}

// Whoever creates threads with all signals blocked still has threads that can be ended.
void UnblockEndSignal() {
  sigset_t signals;
  ::sigemptyset(&signals);
  ::sigaddset(&signals, EndSignal());
  ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace

void* Thread::State::Main(void* argument) {
  State& self = *static_cast<State*>(argument);
  UnblockEndSignal();
  current = &self;
  self.parking.Stay([&self] { self.Sleep(); });
  self.work(self.argument);
  current = nullptr;
  self.End(kReturned);
  return nullptr;
}

// Leaves the thread by the system call itself. To unwind it, or to let the C runtime take its parts
// back, would need locks that this very thread may hold.
void Thread::State::TerminateCurrent(int /*signal*/) {
  State* const self = current;
  if (self == nullptr) return;
  self->End(kTerminated);
  ::syscall(SYS_exit, 0);
}

int Thread::State::TakeEndSignal() {
  struct sigaction action {};
  action.sa_handler = TerminateCurrent;
  ::sigfillset(&action.sa_mask);
  return ::sigaction(EndSignal(), &action, nullptr);
}

Thread::Thread() : state_(new State) {}

Thread::~Thread() {
  const bool wasCreated = state_->handle != 0;
  // The system still has the thread, which ends in its own time.
  if (wasCreated && state_->ended == 0) static_cast<void>(state_.release());
}

bool Thread::Create(Work work, void* argument) {
  static std::atomic<std::uint32_t> lastHandle = 0;
  state_->work = work;
  state_->argument = argument;
  if (::pthread_create(&state_->thread, nullptr, State::Main, state_.get()) != 0) return false;
  state_->handle = ++lastHandle;
  return true;
}

std::uint32_t Thread::GetHandle() const {
  return state_->handle;
}

void Thread::Resume() {
  state_->parking.Unpark([this] { FutexWakeOne(&state_->parking.Word()); });
}

void Thread::Suspend() {
  state_->parking.Park([this] { state_->Sleep(); });
}

bool Thread::WaitForEnd(const Deadline& deadline) {
  while (state_->ended == 0 && deadline.GetMillisecondsLeft() != 0) {
    FutexWait(state_->ended, 0, deadline);
  }
  // One that was terminated never tells the C runtime that it has ended.
  if (state_->ended == State::kReturned && !state_->isJoined) {
    ::pthread_join(state_->thread, nullptr);
    state_->isJoined = true;
  }
  return state_->ended != 0;
}

// Again and again, since a thread that has just been created may not be ready for it.
void Thread::Terminate() {
  constexpr std::uint32_t kLimit = 1000;  // milliseconds
  constexpr std::uint32_t kBetween = 10;
  static const int taken = State::TakeEndSignal();
  if (taken != 0) return;
  const Deadline deadline(kLimit);
  while (!WaitForEnd(Deadline(0)) && deadline.GetMillisecondsLeft() != 0) {
    ::pthread_kill(state_->thread, EndSignal());
    WaitForEnd(Deadline(kBetween));
  }
}

}  // namespace vemra::platform
