#include "Support/services/Log.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>
#include <vector>

#include "Support/foundation/DateTime.h"
#include "Support/foundation/Registry.h"
#include "Support/platform/Clock.h"
#include "tests/TestRegistry.h"
#include "tests/services/TextFile.h"

namespace vemra {
namespace {

constexpr char kKey[] = "Vemra Info\\Log";

class LogTest : public testing::Test {
 protected:
  LogTest() { SetTavoValue(kKey, "LogFilePath", registry_.Folder().Path()); }
  std::filesystem::path File(const std::string& name) const {
    return registry_.Folder().Host() / name;
  }

  test::TestRegistry registry_;
  VemraConfig config_;
};

TEST_F(LogTest, WritesWhatReachesTheThreshold) {
  const platform::SetClock clock(DateTime::FromLocal({2109, 3, 7, 9, 5, 3}).GetSeconds());
  TavoLog log(config_);  // the spy level is 0, which counts as 4
  log.WriteMessage(kLogError, "db", 0, "dropped");
  log.WriteMessage(kLogFatalError, "db", 0, "%s %d%%", "full", 100);
  log.WriteMessage(kLogNotice, "db", 1, "own line end\n");
  platform::SetClock::Advance(57'000);
  log.WriteMessage(6, "db", 1, "no word");
  config_.SetSpyLevel(1);
  log.WriteFormattedMessage(kLogInformation, "db", 1, "%d as it stands");
  config_.SetSpyLevel(2);
  log.WriteFormattedMessage(kLogWarning, "db", 1, "");
  config_.SetSpyLevel(3);
  log.WriteFormattedMessage(kLogWarning, "db", 1, "dropped");
  log.WriteFormattedMessage(kLogError, "db", 1, std::string_view("\xE9\0.", 3));
  EXPECT_EQ(test::ReadTextFile(File("db.txt")),
            "03/07/09 09:05:03 Fatal Error: full 100%\n"
            "03/07/09 09:05:03 Information: own line end\n\n"
            "03/07/09 09:06:00 : no word\n"
            "03/07/09 09:06:00 Information: %d as it stands\n"
            "03/07/09 09:06:00 Warning: \n" +
                std::string("03/07/09 09:06:00 Error: \xE9\0.\n", 29));
}

TEST_F(LogTest, NamesChooseAFileOfTheFolder) {
  const struct {
    const char* name;
    const char* file;  // null: refused
  } kRows[] = {{"", "Support.txt"},    {"Support", "Support.txt"}, {"..", "...txt"},
               {"Sales", "Sales.txt"}, {"sALES", "Sales.txt"},     {"..\\up", nullptr},
               {"../up", nullptr},     {"a:stream", nullptr},      {"a\nb", nullptr}};
  TavoLog log(config_);
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    testing::internal::CaptureStdout();
    log.WriteFormattedMessage(kLogFatalError, row.name, 0, row.name);
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_EQ(output.starts_with("Couldn't open file:"), row.file == nullptr) << output;
    if (row.file == nullptr) continue;
    EXPECT_TRUE(test::ReadTextFile(File(row.file))
                    .ends_with(std::string(" Fatal Error: ") + row.name + "\n"));
  }
}

TEST_F(LogTest, AFileThatCannotBeOpenedIsTriedAgain) {
  SetTavoValue(kKey, "LogFilePath", registry_.Folder().Path("later"));
  TavoLog log(config_);
  log.WriteFormattedMessage(kLogNotice, "db", 1, "no folder");
  std::filesystem::create_directory(File("later"));
  test::WriteHostFile(File("later/db.txt"), "before\n");
  {
    TavoLog other(config_);
    other.WriteFormattedMessage(kLogNotice, "db", 1, "first");
    log.WriteFormattedMessage(kLogNotice, "db", 1, "denied");
  }
  log.WriteFormattedMessage(kLogNotice, "db", 1, "second");
  std::string messages;
  for (const std::string& line : test::ReadLines(File("later/db.txt"))) {
    messages += line.substr(line.rfind(' ') + 1);
  }
  EXPECT_EQ(messages, "beforefirstsecond");

  SetTavoValue(kKey, "LogFilePath", "");
  EXPECT_FALSE(TavoLog(config_).IsLogged(kLogNotice));
}

// Half of the threads without the log's lock.
TEST_F(LogTest, ThreadsNeitherTearNorLoseLines) {
  constexpr int kThreads = 4;
  constexpr int kLines = 200;
  TavoLog log(config_);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      // One byte more than is formatted in place.
      const std::string message(500, static_cast<char>('a' + thread));
      for (int line = 0; line < kLines; ++line) {
        std::unique_lock guard(log, std::defer_lock);
        if (thread == 0) guard.lock();
        log.WriteMessage(kLogNotice, std::to_string(line % 2), thread % 2, "%s", message.c_str());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::vector<std::string> lines = test::ReadLines(File("0.txt"));
  const std::vector<std::string> others = test::ReadLines(File("1.txt"));
  lines.insert(lines.end(), others.begin(), others.end());
  EXPECT_EQ(lines.size(), std::size_t{kThreads * kLines});
  for (const std::string& line : lines) {
    ASSERT_EQ(line.substr(17), " Information: " + std::string(500, line.back()));
  }
}

}  // namespace
}  // namespace vemra
