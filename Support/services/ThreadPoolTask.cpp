#include "Support/services/ThreadPoolTask.h"

#include <utility>

namespace vemra {

// A mutex of one byte. It is each task's own, so that a task that is ended by force with its detail
// in use holds up nobody else.
class CThreadPoolTask::DetailGuard {
 public:
  explicit DetailGuard(const CThreadPoolTask& task) : isInUse_(task.isDetailInUse_) {
    while (isInUse_.test_and_set(std::memory_order_acquire)) isInUse_.wait(true);
  }
  ~DetailGuard() {
    isInUse_.clear(std::memory_order_release);
    isInUse_.notify_one();
  }
  DetailGuard(const DetailGuard&) = delete;
  DetailGuard& operator=(const DetailGuard&) = delete;

 private:
  std::atomic_flag& isInUse_;
};

CThreadPoolTask::CThreadPoolTask(std::string name, int autoDelete)
    : autoDelete_(autoDelete != 0), name_(std::move(name)) {}

CThreadPoolTask::CThreadPoolTask(const CThreadPoolTask& other)
    : id_(other.id_),
      autoDelete_(other.autoDelete_),
      queuedTime_(other.queuedTime_),
      startTime_(other.startTime_),
      name_(other.name_),
      detail_(std::make_unique<std::string>(other.GetDetail())) {}

CThreadPoolTask& CThreadPoolTask::operator=(const CThreadPoolTask& other) {
  id_ = other.id_;
  autoDelete_ = other.autoDelete_;
  queuedTime_ = other.queuedTime_;
  startTime_ = other.startTime_;
  name_ = other.name_;
  SetDetail(other.GetDetail());
  return *this;
}

CThreadPoolTask::~CThreadPoolTask() = default;

std::string CThreadPoolTask::GetDetail() const {
  const DetailGuard guard(*this);
  return detail_ == nullptr ? "" : *detail_;
}

void CThreadPoolTask::SetDetail(const std::string& detail) {
  auto copy = std::make_unique<std::string>(detail);
  const DetailGuard guard(*this);
  detail_.swap(copy);
}

}  // namespace vemra
