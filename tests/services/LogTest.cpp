#include "Support/services/Log.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>
#include <vector>

#include "Support/foundation/DateTime.h"
#include "Support/foundation/Registry.h"
#include "Support/platform/Clock.h"
#include "tests/TestRegistry.h"

namespace vemra {
namespace {

constexpr char kKey[] = "Vemra Info\\Log";

class LogTest : public testing::Test {
 protected:
  LogTest() { SetTavoValue(kKey, "LogFilePath", registry_.Folder().Path()); }
  std::string Text(const std::string& file) const {
    std::string bytes = test::ReadHostFile(registry_.Folder().Host() / file);
    std::erase(bytes, '\r');
    return bytes;
  }
  std::size_t FileCount() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(registry_.Folder().Host())) {
      count += entry.path().extension() == ".txt";
    }
    return count;
  }

  test::TestRegistry registry_;
};

TEST_F(LogTest, WritesWhatReachesTheThreshold) {
  const platform::SetClock clock(DateTime::FromLocal({2009, 3, 7, 9, 5, 3}).GetSeconds());
  VemraConfig config;  // its spy level is 0, which counts as 4
  TavoLog log(config);
  log.WriteMessage(kLogError, "db", 0, "dropped");
  log.WriteMessage(kLogFatalError, "db", 0, "%s %d%%", "full", 100);
  log.WriteMessage(kLogNotice, "db", 1, "own line end\n");
  platform::SetClock::Advance(57'000);
  log.WriteMessage(6, "db", 1, "no word");
  config.SetSpyLevel(1);
  log.WriteFormattedMessage(kLogInformation, "db", 1, "%d as it stands");
  log.WriteFormattedMessage(kLogWarning, "db", 1, "");
  config.SetSpyLevel(3);
  log.WriteFormattedMessage(kLogWarning, "db", 1, "dropped");
  log.WriteFormattedMessage(kLogError, "db", 1, std::string_view("\xE9\0.", 3));
  EXPECT_EQ(Text("db.txt"),
            "03/07/09 09:05:03 Fatal Error: full 100%\n"
            "03/07/09 09:05:03 Information: own line end\n\n"
            "03/07/09 09:06:00 : no word\n"
            "03/07/09 09:06:00 Information: %d as it stands\n"
            "03/07/09 09:06:00 Warning: \n" +
                std::string("03/07/09 09:06:00 Error: \xE9\0.\n", 29));
}

TEST_F(LogTest, MessagesOfEveryLengthArriveWhole) {
  const VemraConfig config;
  TavoLog log(config);
  std::string expected;
  for (const std::size_t length : {499, 500, 501, 100'000}) {
    const std::string message(length, 'x');
    log.WriteMessage(kLogFatalError, "db", 1, "%s", message.c_str());
    expected += "Fatal Error: " + message + "\n";
  }
  std::istringstream lines(Text("db.txt"));
  std::string written;
  for (std::string line; std::getline(lines, line);) written += line.substr(18) + "\n";
  EXPECT_EQ(written, expected);
}

TEST_F(LogTest, NamesChooseAFileOfTheFolder) {
  const VemraConfig config;
  const struct {
    const char* name;
    const char* file;  // null: refused
  } kRows[] = {{"", "Support.txt"},   {"Support", "Support.txt"}, {"a.b", "a.b.txt"},
               {"..", "...txt"},      {"Sales", "Sales.txt"},     {"sALES", "Sales.txt"},
               {"..\\up", nullptr},   {"../up", nullptr},         {"C:x", nullptr},
               {"a:stream", nullptr}, {"a\nb", nullptr}};
  TavoLog log(config);
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    const std::string before = row.file == nullptr ? "" : Text(row.file);
    testing::internal::CaptureStdout();
    log.WriteFormattedMessage(kLogFatalError, row.name, 0, row.name);
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_EQ(output.starts_with("Couldn't open file:"), row.file == nullptr) << output;
    if (row.file == nullptr) continue;
    EXPECT_TRUE(Text(row.file).starts_with(before));
    EXPECT_TRUE(Text(row.file).ends_with(std::string(" Fatal Error: ") + row.name + "\n"));
  }
  EXPECT_EQ(FileCount(), 4U);
}

TEST_F(LogTest, WithoutAFolderNothingIsLogged) {
  const VemraConfig config;
  SetTavoValue(kKey, "LogFilePath", "");
  const TavoLog empty(config);
  DeleteTavoValue(kKey, "LogFilePath");
  const TavoLog missing(config);
  EXPECT_FALSE(empty.IsLogged(kLogNotice));
  EXPECT_FALSE(missing.IsLogged(kLogNotice));
}

TEST_F(LogTest, AFileThatCannotBeOpenedIsTriedAgain) {
  const VemraConfig config;
  const auto folder = registry_.Folder().Host() / "later";
  SetTavoValue(kKey, "LogFilePath", registry_.Folder().Path("later"));
  TavoLog log(config);
  testing::internal::CaptureStdout();
  log.WriteFormattedMessage(kLogNotice, "db", 1, "lost");
  EXPECT_TRUE(testing::internal::GetCapturedStdout().starts_with("Couldn't open file:"));
  std::filesystem::create_directory(folder);
  test::WriteHostFile(folder / "db.txt", "before\n");
  {
    TavoLog other(config);
    other.WriteFormattedMessage(kLogNotice, "db", 1, "first");
    testing::internal::CaptureStdout();
    log.WriteFormattedMessage(kLogNotice, "db", 1, "denied");
    EXPECT_NE(testing::internal::GetCapturedStdout(), "");
  }
  log.WriteFormattedMessage(kLogNotice, "db", 1, "second");
  std::istringstream lines(Text("later/db.txt"));
  std::string messages;
  for (std::string line; std::getline(lines, line);) messages += line.substr(line.rfind(' ') + 1);
  EXPECT_EQ(messages, "beforefirstsecond");
}

// Half of the threads without the log's lock; one holds it over pairs of messages.
TEST_F(LogTest, ThreadsNeitherTearNorLoseLines) {
  constexpr int kThreads = 4;
  constexpr int kLines = 200;
  const VemraConfig config;
  TavoLog log(config);
  const std::string message(300, 'x');
  const auto write = [&](int thread) {
    for (int line = 0; line < kLines; line += 2) {
      if (thread == 0) {
        const std::lock_guard guard(log);
        log.WriteFormattedMessage(kLogNotice, "0", 1, "first");
        log.WriteFormattedMessage(kLogNotice, "0", 1, "second");
      } else {
        const std::string name(1, static_cast<char>('0' + line / 2 % 2));
        log.WriteMessage(kLogNotice, name, thread % 2, "%s", message.c_str());
        log.WriteFormattedMessage(kLogNotice, name, thread % 2, message);
      }
    }
  };
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(write, thread);
  for (std::thread& thread : threads) thread.join();

  int count = 0;
  for (const char* const file : {"0.txt", "1.txt"}) {
    std::istringstream lines(Text(file));
    for (std::string line; std::getline(lines, line); ++count) {
      const std::string text = line.substr(17);
      ASSERT_TRUE(text == " Information: first" || text == " Information: second" ||
                  text == " Information: " + message)
          << line;
    }
  }
  EXPECT_EQ(count, kThreads * kLines);
}

}  // namespace
}  // namespace vemra
