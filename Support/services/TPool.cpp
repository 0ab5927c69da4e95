#include "Support/services/TPool.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <new>
#include <utility>

#include "Support/foundation/INIException.h"
#include "Support/platform/Event.h"
#include "Support/platform/Thread.h"

namespace vemra {

namespace {

// The levels of the trace lines.
constexpr std::uint32_t kInformation = 0;
constexpr std::uint32_t kError = 1;

// A macro for the line's number, and so that a line that is not traced costs no call.
#define TPOOL_TRACE(level, ...)                                          \
  if (trace_.IsTraced(kTraceServer, level)) {                            \
    trace_.TraceEx("TPool", __LINE__, kTraceServer, level, __VA_ARGS__); \
  }

constexpr char kIdleName[] = "Query Thread (Idle)";
constexpr char kIdleDetail[] = "N/A";

}  // namespace

struct CThreadPool::Worker {
  explicit Worker(CThreadPool& itsPool) : pool(itsPool) {}
  static void Work(void* self) {
    Worker& worker = *static_cast<Worker*>(self);
    worker.pool.ThreadProc(worker);
  }

  CThreadPool& pool;
  platform::Thread thread;
  CThreadPoolTask* task = nullptr;  // the running one
  Worker* nextIdle = nullptr;       // of an idle thread: the one suspended before it
};

CThreadPool::CThreadPool(int maxThreads, std::uint32_t shutdownWait, TavoTrace& trace)
    : maxThreads_(maxThreads),
      shutdownWait_(shutdownWait),
      trace_(trace),
      allDone_(std::make_unique<platform::Event>(/*isSignalled=*/true)) {}

CThreadPool::~CThreadPool() {
  {
    const std::lock_guard guard(lock_);
    isClosing_ = true;
  }
  RemoveQueuedTasks();
  ResumeSuspendedThreads();
  KillWorkingThreads();
}

std::uint32_t CThreadPool::DoTask(CThreadPoolTask* task, int queueIfBusy) {
  if (task == nullptr) return 0;
  TPOOL_TRACE(kInformation, "New task arrived: \"%s\".", task->name_.c_str());
  std::unique_lock guard(lock_);
  if (isClosing_) return 0;
  Worker* const worker = GetAvailableThread();
  if (worker == nullptr) {
    TPOOL_TRACE(kInformation, "No thread available for task \"%s\".", task->name_.c_str());
    if (queueIfBusy == 0 || !CheckLimitations()) return 0;
  }
  task->QueueNow();
  queue_.Append(task);
  const std::uint32_t id = AssignNewID(*task);
  guard.unlock();
  if (worker != nullptr) worker->thread.Resume();
  return id;
}

// Null when there is none. The thread counts as working from here on.
CThreadPool::Worker* CThreadPool::GetAvailableThread() {
  Worker* worker = nullptr;
  if (idle_ != nullptr) {
    worker = std::exchange(idle_, idle_->nextIdle);
    TPOOL_TRACE(kInformation, "Activating suspended thread 0x%X.", worker->thread.GetHandle());
  } else if (working_ >= maxThreads_) {
    TPOOL_TRACE(kInformation, "%d threads already running (%d max).", working_, maxThreads_);
  } else {
    worker = CreateNewThread();
  }
  if (worker != nullptr) AddWorking();
  return worker;
}

// It starts when it is resumed, by when its task is queued. Null when the system has none to give.
CThreadPool::Worker* CThreadPool::CreateNewThread() {
  try {
    auto worker = std::make_unique<Worker>(*this);
    workers_.reserve(workers_.size() + 1);
    if (worker->thread.Create(Worker::Work, worker.get())) {
      TPOOL_TRACE(kInformation, "Created new thread 0x%X.", worker->thread.GetHandle());
      workers_.push_back(std::move(worker));
      return workers_.back().get();
    }
  } catch (const std::bad_alloc&) {
  }
  TPOOL_TRACE(kError, "_beginthreadex() failed.");
  return nullptr;
}

// A backlog is accepted while it moves: until its newest task has waited for the limit.
bool CThreadPool::CheckLimitations() const {
  if (queue_.IsEmpty() || static_cast<int>(queue_.GetCount()) < working_) return true;
  if (maxWaitSeconds_ == 0) return true;
  return DateTime::Now() - queue_.Newest().GetQueuedTime() < TimeSpan(maxWaitSeconds_);
}

std::uint32_t CThreadPool::AssignNewID(CThreadPoolTask& task) {
  if (++lastId_ == 0) ++lastId_;  // 0 stands for a refused task
  task.id_ = lastId_;
  return lastId_;
}

void CThreadPool::AddWorking() {
  if (++working_ == 1) allDone_->Reset();
  peakThreads_ = std::max(peakThreads_, working_);
}

void CThreadPool::RemoveWorking() {
  if (--working_ == 0) allDone_->Set();
}

void CThreadPool::ThreadProc(Worker& self) {
  CThreadPoolTask* task = GetTask(self);
  while (task != nullptr) {
    RunTask(*task);
    task = TaskDone(self, task);
  }
}

// Suspends the calling thread while there is no task. Null when the pool closes.
CThreadPoolTask* CThreadPool::GetTask(Worker& self) {
  std::unique_lock guard(lock_);
  while (queue_.IsEmpty()) {
    RemoveWorking();
    if (isClosing_) return nullptr;
    self.nextIdle = std::exchange(idle_, &self);
    guard.unlock();
    TPOOL_TRACE(kInformation, "Thread 0x%X is idle, suspending...", self.thread.GetHandle());
    self.thread.Suspend();  // who resumes it has counted it as working
    guard.lock();
  }
  return StartOldest(self);
}

CThreadPoolTask* CThreadPool::StartOldest(Worker& self) {
  self.task = queue_.TakeOldest();
  self.task->StartNow();
  return self.task;
}

// Gives the next task. The thread goes on working until the finished one is destroyed, so that
// nothing is left of it when all is done.
CThreadPoolTask* CThreadPool::TaskDone(Worker& self, CThreadPoolTask* task) {
  std::unique_lock guard(lock_);
  const bool isOurs = task->autoDelete_;
  self.task = nullptr;
  CThreadPoolTask* const next = queue_.IsEmpty() ? nullptr : StartOldest(self);
  guard.unlock();
  if (isOurs) delete task;
  return next != nullptr ? next : GetTask(self);
}

void CThreadPool::RunTask(CThreadPoolTask& task) {
  std::string failure;
  try {
    task.Run();
    return;
  } catch (const std::exception& exception) {
    failure = exception.what();
  } catch (const TavoINIException& exception) {
    failure = exception.message;
  } catch (...) {
    failure = "unknown";
  }
  TPOOL_TRACE(kError, "Task \"%s\" ended by an exception: %s", task.name_.c_str(), failure.c_str());
}

int CThreadPool::GetRunningTasksCount() const {
  const std::lock_guard guard(lock_);
  return static_cast<int>(std::count_if(workers_.begin(), workers_.end(), [](const auto& worker) {
    return worker->task != nullptr;
  }));
}

void CThreadPool::GetRunningTasksList(CTaskInfoArray& tasks, int append) const {
  if (append == 0) tasks.RemoveAllItems();
  const std::lock_guard guard(lock_);
  for (const auto& worker : workers_) {
    const CThreadPoolTask* const task = worker->task;
    if (task != nullptr) tasks.Add({task->name_, task->GetDetail(), task->startTime_});
  }
  for (const Worker* worker = idle_; worker != nullptr; worker = worker->nextIdle) {
    tasks.Add({kIdleName, kIdleDetail, DateTime::Now()});
  }
}

std::uint32_t CThreadPool::WaitForTasksCompletion(std::uint32_t milliseconds) const {
  return allDone_->Wait(milliseconds);
}

void CThreadPool::RemoveQueuedTasks() {
  TaskQueue removed;
  {
    const std::lock_guard guard(lock_);
    std::swap(removed, queue_);
  }
  while (!removed.IsEmpty()) delete removed.TakeOldest();
}

void CThreadPool::SetMaxThreads(int maxThreads) {
  const std::lock_guard guard(lock_);
  maxThreads_ = maxThreads;
}

void CThreadPool::SetMaxWaitSeconds(int seconds) {
  const std::lock_guard guard(lock_);
  maxWaitSeconds_ = seconds;
}

int CThreadPool::GetMaxWaitSeconds() const {
  const std::lock_guard guard(lock_);
  return maxWaitSeconds_;
}

int CThreadPool::GetMaxNumThreads() const {
  const std::lock_guard guard(lock_);
  return peakThreads_;
}

// Each finds the pool closing, and ends.
void CThreadPool::ResumeSuspendedThreads() {
  const std::lock_guard guard(lock_);
  while (idle_ != nullptr) {
    AddWorking();
    std::exchange(idle_, idle_->nextIdle)->thread.Resume();
  }
}

// For all threads that there are: one that works no more may still be on its way out.
bool CThreadPool::WaitForWorkingThreads() {
  const platform::Deadline deadline(shutdownWait_);
  bool haveEnded = true;
  for (const auto& worker : workers_) haveEnded &= worker->thread.WaitForEnd(deadline);
  return haveEnded;
}

// Without the lock, on purpose: a thread that is stuck may hold it.
void CThreadPool::KillWorkingThreads() {
  if (WaitForWorkingThreads()) return;
  for (const auto& worker : workers_) {
    if (worker->thread.WaitForEnd(platform::Deadline(0))) continue;
    worker->thread.Terminate();
    delete worker->task;
  }
}

}  // namespace vemra
