#pragma once

#include "Support/platform/RegistryKeys.h"
#include "tests/TempFolder.h"

namespace vemra::test {

// An empty registry store of the test's own while it lives; the user's is never touched.
class TestRegistry {
 public:
  TestRegistry() { platform::RedirectRegistry(folder_.Host()); }
  ~TestRegistry() { platform::RedirectRegistry({}); }
  TestRegistry(const TestRegistry&) = delete;
  TestRegistry& operator=(const TestRegistry&) = delete;

  const TempFolder& Folder() const { return folder_; }

 private:
  TempFolder folder_;
};

}  // namespace vemra::test
