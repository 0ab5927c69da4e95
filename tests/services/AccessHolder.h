#pragma once

#include <algorithm>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Support/platform/Process.h"
#include "Support/services/DBAccess.h"
#include "tests/services/TextFile.h"

namespace vemra::test {

// Access objects that belong to a thread of their own, as another program's do. The thread lives as
// long, so that no other one gets its id; the object itself is used by the test's thread.
class AccessHolder {
 public:
  explicit AccessHolder(const std::string& path) {
    std::promise<void> made;
    thread_ = std::thread([&, end = end_.get_future().share()] {
      access_ = std::make_unique<TavoDBAccess>(path);
      threadId_ = platform::GetThreadId();
      made.set_value();
      end.wait();
    });
    made.get_future().wait();
  }
  ~AccessHolder() {
    end_.set_value();
    thread_.join();
  }
  AccessHolder(const AccessHolder&) = delete;
  AccessHolder& operator=(const AccessHolder&) = delete;

  TavoDBAccess* operator->() { return access_.get(); }
  std::uint32_t GetThreadId() const { return threadId_; }

 private:
  std::promise<void> end_;
  std::unique_ptr<TavoDBAccess> access_;
  std::uint32_t threadId_ = 0;
  std::thread thread_;
};

// The names on the lines of an access file, in their order.
inline std::vector<std::string> ReadAccessNames(const std::filesystem::path& path) {
  std::vector<std::string> names = ReadLines(path);
  for (std::string& name : names) name.resize(std::min(name.find(' '), name.size()));
  return names;
}

}  // namespace vemra::test
