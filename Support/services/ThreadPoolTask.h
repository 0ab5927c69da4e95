#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"

namespace vemra {

// One unit of work for a thread pool, which derived tasks do in Run. CThreadPool::DoTask says who
// owns a task when.
class SUPPORT_API CThreadPoolTask {
 public:
  virtual ~CThreadPoolTask();
  // The work itself, on a thread of the pool. An exception that leaves it ends the task as one that
  // has finished, and is traced.
  virtual void Run() = 0;

  // With a non-zero autoDelete the pool destroys the task after it has run. The name is shown in
  // traces and in the list of running tasks.
  explicit CThreadPoolTask(std::string name = "", int autoDelete = 1);
  // Every field; the copy is in no queue.
  CThreadPoolTask(const CThreadPoolTask& other);
  CThreadPoolTask& operator=(const CThreadPoolTask& other);

  const std::string& GetName() const { return name_; }
  int GetAutoDelete() const { return autoDelete_ ? 1 : 0; }

  // A second text for the list of running tasks, empty at first. A running task may set it at any
  // time, and any thread may ask for it.
  std::string GetDetail() const;
  void SetDetail(const std::string& detail);

  // What the pool sets when it accepts the task and when it starts it; 0 until then. Not to be
  // asked for by others while it does.
  std::uint32_t GetId() const { return id_; }
  void QueueNow() { queuedTime_ = DateTime::Now(); }
  DateTime GetQueuedTime() const { return queuedTime_; }
  void StartNow() { startTime_ = DateTime::Now(); }
  DateTime GetStartTime() const { return startTime_; }

 private:
  friend class CThreadPool;
  friend class TaskQueue;

  class DetailGuard;

  // Small, and what the pool touches first, on purpose: a server queues many of them.
  CThreadPoolTask* next_ = nullptr;  // in the pool's queue
  std::uint32_t id_ = 0;
  bool autoDelete_;
  mutable std::atomic_flag isDetailInUse_;
  DateTime queuedTime_;
  DateTime startTime_;
  std::string name_;
  std::unique_ptr<std::string> detail_;  // null until one is set
};

}  // namespace vemra
