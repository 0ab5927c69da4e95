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

// A full disk, a reader's archiver and another process that is denied the file, all at once.
TEST(LogProcessTest, LinesStayWholeWhateverHappensToTheFile) {
  const test::TestRegistry registry;
  SetTavoValue("Vemra Info\\Log", "LogFilePath", registry.Folder().Path());
  const auto path = registry.Folder().Host() / "db.txt";
  const VemraConfig config;
  TavoLog log(config);
  log.WriteFormattedMessage(kLogNotice, "db", 1, "archived");
  std::filesystem::resize_file(path, 0);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    TavoLog(config).WriteFormattedMessage(kLogNotice, "db", 1, "denied");
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100, 100};  // bytes of a file
    ::setrlimit(RLIMIT_FSIZE, &limit);
    log.WriteFormattedMessage(kLogNotice, "db", 1, "kept");
    log.WriteFormattedMessage(kLogNotice, "db", 1, std::string(200, 'x'));
    ::_exit(0);
  }
  ::waitpid(child, nullptr, 0);
  log.WriteFormattedMessage(kLogNotice, "db", 1, "next");
  const std::string text = test::ReadHostFile(path);
  const std::size_t length = std::string("03/07/24 09:05:03 Information: kept\n").size();
  ASSERT_EQ(text.size(), 2 * length) << text;
  EXPECT_EQ(text.substr(31, 5), "kept\n");
  EXPECT_EQ(text.substr(length + 31), "next\n");
}

}  // namespace
}  // namespace vemra
