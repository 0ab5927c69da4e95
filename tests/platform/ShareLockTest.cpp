#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <system_error>

#include "Support/foundation/File.h"
#include "Support/platform/Errors.h"
#include "tests/TempFolder.h"
#include "tests/posix/Processes.h"

namespace vemra::test {
namespace {

bool CanWrite(const std::string& path) {
  try {
    const TavoFile file(path, TavoFile::Access::kWrite, TavoFile::Creation::kOpenOrCreate);
    return true;
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code().value(), static_cast<int>(platform::kSharingViolation));
    return false;
  }
}

TEST(ShareLockTest, HoldsBetweenProcessesAndVanishesWithAKilledHolder) {
  const TempFolder folder;
  const std::string path = folder.Path("a.acc");
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t holder = Start([&] {
    const TavoFile file(path, TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenOrCreate,
                        TavoFile::Share::kDenyWrite);
    if (::write(ready[1], "x", 1) == 1) ::pause();
    ::_exit(1);
  });
  ASSERT_GT(holder, 0);
  char byte = 0;
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  EXPECT_FALSE(CanWrite(path));
  ::kill(holder, SIGKILL);
  Wait(holder);
  EXPECT_TRUE(CanWrite(path));
  ::close(ready[0]);
  ::close(ready[1]);
}

}  // namespace
}  // namespace vemra::test
