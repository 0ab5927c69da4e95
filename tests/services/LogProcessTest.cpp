#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "Support/foundation/Registry.h"
#include "Support/services/Log.h"
#include "tests/TestRegistry.h"

namespace vemra {
namespace {

class LogProcessTest : public testing::Test {
 protected:
  LogProcessTest() { SetTavoValue("Vemra Info\\Log", "LogFilePath", registry_.Folder().Path()); }
  // Runs the function in a process of its own and waits for it.
  template <class Function>
  static void InChild(Function function) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      function();
      ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
  }
  std::string Text() const { return test::ReadHostFile(registry_.Folder().Host() / "db.txt"); }

  test::TestRegistry registry_;
  VemraConfig config_;
};

TEST_F(LogProcessTest, ADeniedProcessLosesItsMessageOnly) {
  {
    TavoLog log(config_);
    log.WriteFormattedMessage(kLogNotice, "db", 1, "one");
    InChild([&] { TavoLog(config_).WriteFormattedMessage(kLogNotice, "db", 1, "lost"); });
    log.WriteFormattedMessage(kLogNotice, "db", 1, "two");
  }
  InChild([&] { TavoLog(config_).WriteFormattedMessage(kLogNotice, "db", 1, "three"); });
  const std::string text = Text();
  EXPECT_EQ(text.find("lost"), std::string::npos);
  EXPECT_LT(text.find(": one\n"), text.find(": two\n"));
  EXPECT_TRUE(text.ends_with(": three\n"));
}

TEST_F(LogProcessTest, ALineWithoutRoomLeavesNoPartBehind) {
  InChild([&] {
    TavoLog log(config_);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100, 100};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const std::string tooLong(200, 'x');
    for (const char* const message : {"kept", tooLong.c_str(), "short"}) {
      log.WriteFormattedMessage(kLogNotice, "db", 1, message);
    }
  });
  const std::string text = Text();
  EXPECT_EQ(text.find("xx"), std::string::npos);
  EXPECT_NE(text.find(": kept\n"), std::string::npos);
  EXPECT_TRUE(text.ends_with(": short\n"));
}

TEST_F(LogProcessTest, LinesGoOnWhereSomebodyHasCutTheFile) {
  TavoLog log(config_);
  log.WriteFormattedMessage(kLogNotice, "db", 1, "archived");
  std::filesystem::resize_file(registry_.Folder().Host() / "db.txt", 0);
  log.WriteFormattedMessage(kLogNotice, "db", 1, "next");
  EXPECT_EQ(Text().size(), std::string("03/07/24 09:05:03 Information: next\n").size());
}

}  // namespace
}  // namespace vemra
