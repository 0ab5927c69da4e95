#pragma once

#include <gtest/gtest.h>

#include <string>

#include "Support/platform/Dde.h"
#include "Support/platform/InProcessDde.h"

namespace vemra::test {

// A DDE manager for a test: the in-process one of the test's own, or the system's, where it has one
// of its own. It is the process's manager meanwhile.
class TestDdeManager {
 public:
  enum Kind { kInProcess, kSystem };

  explicit TestDdeManager(Kind kind) : kind_(kind) {
    platform::SetDdeManager(kind == kInProcess ? &inProcess_ : nullptr);
  }
  ~TestDdeManager() { platform::SetDdeManager(nullptr); }
  TestDdeManager(const TestDdeManager&) = delete;
  TestDdeManager& operator=(const TestDdeManager&) = delete;

  platform::DdeManager* operator->() const { return &platform::GetDdeManager(); }
  const platform::InProcessDde& InProcess() const { return inProcess_; }
  bool IsInProcess() const { return kind_ == kInProcess; }
  // Lets everything come that was sent. The system's manager needs a moment after each transaction.
  void Settle() const { platform::GetDdeManager().HandleMessages(IsInProcess() ? 0 : 250); }

  std::string Text(std::uint32_t instance, DDEString string) const {
    std::string text = string == DDEString::kNone ? "-" : "?";
    platform::GetDdeManager().QueryString(instance, string, &text);
    return text;
  }
  std::string Bytes(DDEData data) const {
    std::uint32_t size = 0;
    const std::uint8_t* const bytes = platform::GetDdeManager().AccessData(data, &size);
    if (bytes == nullptr) return "no data";
    std::string text(reinterpret_cast<const char*>(bytes), size);
    platform::GetDdeManager().UnaccessData(data);
    return text;
  }

 private:
  Kind kind_;
  platform::InProcessDde inProcess_;
};

inline auto EveryDdeManager() {
#if defined(_WIN32)
  return testing::Values(TestDdeManager::kInProcess, TestDdeManager::kSystem);
#else
  return testing::Values(TestDdeManager::kInProcess);
#endif
}

}  // namespace vemra::test
