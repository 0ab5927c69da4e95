#pragma once

#include <cstdint>
#include <memory>

#include "Support/platform/Deadline.h"

namespace vemra::platform {

// A thread of the system that can be suspended, and as a last resort ended from outside.
//
// It is created suspended, and later suspends nobody but itself. A suspended thread costs no
// processor time. A Resume is never lost: one that comes before the Suspend that it is meant for
// makes that return at once. Of two before one Suspend, the second is nothing.
class Thread {
 public:
  using Work = void (*)(void* argument);

  Thread();
  // The thread must have ended (WaitForEnd, Terminate) or never have been created.
  ~Thread();
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;

  // Once. The thread calls work(argument), which must not throw, from the first Resume on. False
  // when the system has no thread to give.
  bool Create(Work work, void* argument);

  // What tells it from the process's other threads: its handle on Windows, a running number on
  // Linux.
  std::uint32_t GetHandle() const;

  void Resume();   // by any other thread
  void Suspend();  // by the thread itself

  // True once work has returned, or the thread was terminated, and none of its code will run.
  bool WaitForEnd(const Deadline& deadline);

  // Ends the thread wherever it is, without its doing anything more: what it holds stays held, its
  // stack stays allocated, no destructor runs. Returns when that is so, at the latest after a
  // second: a thread that waits inside the system for a device ends when that wait does, before
  // any more of its code.
  //
  // On Linux the first call takes the signal SIGRTMAX-2, which the threads made here keep
  // unblocked.
  void Terminate();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace vemra::platform
