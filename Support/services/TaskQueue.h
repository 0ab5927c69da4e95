#pragma once

#include <cstddef>
#include <utility>

#include "Support/services/ThreadPoolTask.h"

namespace vemra {

// The tasks that wait, first in first out, linked through themselves: nothing is allocated, so
// queuing a task cannot fail. It owns none of them.
class TaskQueue {
 public:
  bool IsEmpty() const { return head_ == nullptr; }
  std::size_t GetCount() const { return count_; }
  const CThreadPoolTask& Newest() const { return *tail_; }

  void Append(CThreadPoolTask* task) {
    task->next_ = nullptr;
    (head_ == nullptr ? head_ : tail_->next_) = task;
    tail_ = task;
    ++count_;
  }
  CThreadPoolTask* TakeOldest() {
    --count_;
    CThreadPoolTask* const oldest = std::exchange(head_, head_->next_);
    // The tasks of a long queue have left the processor's caches.
    __builtin_prefetch(head_, /*rw=*/1);
    return oldest;
  }

 private:
  CThreadPoolTask* head_ = nullptr;
  CThreadPoolTask* tail_ = nullptr;  // unless it is empty
  std::size_t count_ = 0;
};

}  // namespace vemra
