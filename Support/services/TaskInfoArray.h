#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"

namespace vemra {

// What a status display shows of one thread of a pool.
struct TaskInfo {
  std::string name;
  std::string detail;
  DateTime time;
};

// A snapshot of what a pool's threads do, for its caller alone.
class CTaskInfoArray {
 public:
  void Add(TaskInfo info) { items_.push_back(std::move(info)); }
  void RemoveAllItems() { items_.clear(); }

  int GetSize() const { return static_cast<int>(items_.size()); }
  const TaskInfo& operator[](int index) const { return items_[static_cast<std::size_t>(index)]; }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

 private:
  std::vector<TaskInfo> items_;
};

}  // namespace vemra
