#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "Support/foundation/Registry.h"
#include "Support/services/Log.h"
#include "tests/TestRegistry.h"
#include "tests/posix/Processes.h"
#include "tests/services/TextFile.h"

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
  const pid_t child = test::Start([&] {
    TavoLog(config).WriteFormattedMessage(kLogNotice, "db", 1, "denied");
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100, 100};  // bytes of a file
    ::setrlimit(RLIMIT_FSIZE, &limit);
    log.WriteFormattedMessage(kLogNotice, "db", 1, "kept");
    log.WriteFormattedMessage(kLogNotice, "db", 1, std::string(200, 'x'));
  });
  EXPECT_EQ(test::Wait(child), 0);
  log.WriteFormattedMessage(kLogNotice, "db", 1, "next");
  const std::vector<std::string> lines = test::ReadLines(path);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].substr(17), " Information: kept");
  EXPECT_EQ(lines[1].substr(17), " Information: next");
}

}  // namespace
}  // namespace vemra
