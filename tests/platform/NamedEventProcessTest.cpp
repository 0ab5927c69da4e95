#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <vector>

#include "Support/platform/Errors.h"
#include "Support/platform/NamedEvent.h"
#include "tests/TempFolder.h"
#include "tests/posix/Processes.h"

namespace vemra::platform {
namespace {

// A process that has created the event and lives until it is killed.
class Creator {
 public:
  explicit Creator(const std::string& name) {
    int ready[2];
    if (::pipe(ready) != 0) return;
    process_ = test::Start([&] {
      NamedEvent event;
      const char created = event.Create(name) ? 'y' : 'n';
      if (::write(ready[1], &created, 1) == 1) ::pause();
      ::_exit(1);
    });
    ::close(ready[1]);
    char created = 'n';
    succeeded_ = ::read(ready[0], &created, 1) == 1 && created == 'y';
    ::close(ready[0]);
  }
  ~Creator() { Kill(); }
  Creator(const Creator&) = delete;
  Creator& operator=(const Creator&) = delete;

  bool HasSucceeded() const { return succeeded_; }
  void Kill() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    test::Wait(process_);
    process_ = 0;
  }

 private:
  pid_t process_ = 0;
  bool succeeded_ = false;
};

TEST(NamedEventProcessTest, ADeadCreatorsEventIsGoneAndItsSignalNeverInherited) {
  const test::TempFolder folder;
  const std::string name = folder.Host().filename().string();
  Creator dead(name);
  ASSERT_TRUE(dead.HasSucceeded());
  NamedEvent early;
  NamedEvent late;
  ASSERT_TRUE(early.Open(name));
  ASSERT_TRUE(late.Open(name));
  EXPECT_TRUE(early.Set());
  dead.Kill();
  NamedEvent opener;
  EXPECT_FALSE(opener.Open(name));
  EXPECT_EQ(GetLastErrorCode(), kFileNotFound);
  NamedEvent next;
  ASSERT_TRUE(next.Create(name));
  EXPECT_FALSE(next.IsSet());
  EXPECT_TRUE(late.Set());  // meant for the dead one
  EXPECT_FALSE(next.IsSet());
  EXPECT_TRUE(opener.Open(name) && opener.Set());
  EXPECT_TRUE(next.IsSet());
}

// Processes create the same event at once and are killed: there is always one file for all that
// live.
TEST(NamedEventProcessTest, ManyCreatorsThatComeAndDieShareOneEvent) {
  const int rounds = test::Count("VEMRA_SOAK_KILLS", 20);
  const test::TempFolder folder;
  const std::string name = folder.Host().filename().string();
  for (int round = 0; round < rounds; ++round) {
    Creator dead(name);
    std::vector<pid_t> creators;
    if (round % 2 == 0) dead.Kill();
    for (int i = 0; i < 4; ++i) {
      creators.push_back(test::Start([&] {
        NamedEvent event;
        if (!event.Create(name)) ::_exit(1);
        for (int wait = 0; wait < 5000 && !event.IsSet(); ++wait) ::usleep(1000);
        ::_exit(event.IsSet() ? 0 : 2);
      }));
    }
    NamedEvent stopper;
    for (const pid_t creator : creators) {
      // Each of them may not have come yet: a signal is for the living only.
      int status = 0;
      while (::waitpid(creator, &status, WNOHANG) == 0) {
        if (stopper.Open(name)) stopper.Set();
        ::usleep(500);
      }
      EXPECT_EQ(status, 0) << "round " << round;
    }
  }
}

}  // namespace
}  // namespace vemra::platform
