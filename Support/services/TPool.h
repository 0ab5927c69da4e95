#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "Support/Export.h"
#include "Support/services/TaskInfoArray.h"
#include "Support/services/TaskQueue.h"
#include "Support/services/Trace.h"

namespace vemra {

namespace platform {
class Event;
}

// Runs tasks on a limited number of threads, which are kept: one without a task is suspended, at no
// cost, and resumed for a later task. docs/threads.md tells their life cycle.
//
// Any thread may call anything, tasks of the pool included, but only one destroys it, and when it
// does only the pool's own tasks may still call: DoTask refuses theirs then. A pool is a lock too,
// which every operation takes and its holder may take again: while a client holds it (with
// std::lock_guard) no task is accepted, started or finished. No task runs, and none is destroyed,
// under the lock. No exception leaves a pool.
class SUPPORT_API CThreadPool {
 public:
  // At most so many threads exist, and are made when they are first needed. The destructor gives
  // working threads so many milliseconds to finish. The trace must outlive the pool.
  explicit CThreadPool(int maxThreads = 5, std::uint32_t shutdownWait = 5000,
                       TavoTrace& trace = TavoTrace::GetTracer());
  // Destroys the queued tasks, ends the idle threads, waits for the others, and ends by force those
  // that have not finished in time, wherever they are: what such a thread holds stays held. Their
  // tasks are destroyed, whatever their auto-delete flag.
  ~CThreadPool();
  CThreadPool(const CThreadPool&) = delete;
  CThreadPool& operator=(const CThreadPool&) = delete;

  // Accepts a task and returns its id, from 1 on and ever growing (after 2^32 tasks it starts
  // anew), or refuses it and returns 0.
  //
  // It is accepted when a thread is idle, or fewer threads than the maximum work and the system
  // gives another. Else it is refused when queueIfBusy is 0, or when the queue stands still: when
  // it holds as many tasks as threads work, or more, and its newest has waited for the maximal
  // time. Tasks start in the order in which they were accepted.
  //
  // A refused task stays the caller's. An accepted one is the pool's when its auto-delete flag is
  // set. Else it must live until the pool has done with it: until WaitForTasksCompletion has
  // returned 0, it is in the list no more, or the pool is gone. But a task that is still queued
  // when the queue is removed or the pool destroyed, or is ended by force, is always destroyed.
  std::uint32_t DoTask(CThreadPoolTask* task, int queueIfBusy);

  int GetRunningTasksCount() const;
  // Adds each running task (name, detail, start time), in no particular order, and then for each
  // idle thread "Query Thread (Idle)", "N/A" and the present time. With append 0 what the array
  // held is removed first.
  void GetRunningTasksList(CTaskInfoArray& tasks, int append) const;

  // Waits until no thread works. Returns 0, or 258 when that has taken longer than so many
  // milliseconds; 0xFFFFFFFF waits for ever. Tasks that had ended by then are destroyed.
  std::uint32_t WaitForTasksCompletion(std::uint32_t milliseconds) const;

  // Destroys every queued task, whatever its auto-delete flag.
  void RemoveQueuedTasks();

  // A smaller number ends no thread: those that are there are kept and used.
  void SetMaxThreads(int maxThreads);
  // 0, as at first, for no limit.
  void SetMaxWaitSeconds(int seconds);
  int GetMaxWaitSeconds() const;
  int GetMaxNumThreads() const;  // the most threads that have ever worked at once

  void lock() const { lock_.lock(); }
  void unlock() const { lock_.unlock(); }

 private:
  struct Worker;

  Worker* GetAvailableThread();
  Worker* CreateNewThread();
  bool CheckLimitations() const;
  std::uint32_t AssignNewID(CThreadPoolTask& task);

  void ThreadProc(Worker& self);
  CThreadPoolTask* GetTask(Worker& self);
  CThreadPoolTask* TaskDone(Worker& self, CThreadPoolTask* task);
  CThreadPoolTask* StartOldest(Worker& self);
  void RunTask(CThreadPoolTask& task);
  void AddWorking();
  void RemoveWorking();

  void ResumeSuspendedThreads();
  bool WaitForWorkingThreads();
  void KillWorkingThreads();

  mutable std::recursive_mutex lock_;
  TaskQueue queue_;
  Worker* idle_ = nullptr;  // the thread that was suspended last, and from it on the others
  int working_ = 0;         // threads that are not idle
  std::uint32_t lastId_ = 0;
  int maxThreads_;
  int maxWaitSeconds_ = 0;
  int peakThreads_ = 0;
  std::uint32_t shutdownWait_;  // milliseconds
  bool isClosing_ = false;      // no task is accepted and no thread suspended any more
  TavoTrace& trace_;
  std::unique_ptr<platform::Event> allDone_;
  std::vector<std::unique_ptr<Worker>> workers_;  // every thread
};

}  // namespace vemra
