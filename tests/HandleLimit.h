#pragma once

namespace vemra::test {

// While one exists, the process can open only so many files and folders more. Windows has no such
// limit: there nothing is limited.
class HandleLimit {
 public:
  explicit HandleLimit(int more);
  ~HandleLimit();
  HandleLimit(const HandleLimit&) = delete;
  HandleLimit& operator=(const HandleLimit&) = delete;

  static bool Works();

 private:
  [[maybe_unused]] unsigned long long before_ = 0;
};

}  // namespace vemra::test
