#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "Support/platform/PrivateProfile.h"
#include "tests/TempFolder.h"
#include "tests/posix/Processes.h"

namespace vemra::test {
namespace {

std::size_t FileCount(const TempFolder& folder) {
  return std::size_t(std::distance(std::filesystem::directory_iterator(folder.Host()), {}));
}

TEST(ProfileProcessTest, ProcessesThatWriteOneFileLoseNothing) {
  constexpr int kProcesses = 8;
  const int writes = Count("VEMRA_SOAK_WRITES", 20);
  const TempFolder folder;
  const std::string path = folder.Path("p.ini");
  std::vector<pid_t> writers;
  for (int process = 0; process < kProcesses; ++process) {
    writers.push_back(Start([&] {
      for (int i = 0; i < writes; ++i) {
        const std::string key = std::to_string(process) + "-" + std::to_string(i);
        if (!platform::WriteProfile("A", key.c_str(), key.c_str(), path)) ::_exit(1);
      }
    }));
  }
  for (const pid_t writer : writers) EXPECT_EQ(Wait(writer), 0);
  const std::vector<std::string> keys = platform::ReadProfileKeys("A", path);
  EXPECT_EQ(keys.size(), std::size_t(kProcesses * writes));
  for (const std::string& key : keys)
    ASSERT_EQ(platform::ReadProfileString("A", key, "", 20, path), key);
  EXPECT_EQ(FileCount(folder), 1U);
}

constexpr int kKeys = 60;

// Writes one generation after the other, each by one call, without end.
[[noreturn]] void WriteGenerations(const std::string& path) {
  const std::string padding(400, 'x');
  for (int generation = 1;; ++generation) {
    std::vector<platform::ProfileEdit> edits;
    for (int key = 0; key < kKeys; ++key)
      edits.push_back({"S", "k" + std::to_string(key), std::to_string(generation) + padding});
    if (!platform::EditProfile(edits, path)) ::_exit(1);
  }
}

// A file holds all the keys of one generation, or none at all.
void ExpectOneGeneration(const TempFolder& folder, int round) {
  const platform::ProfileText text(ReadHostFile(folder.Host() / "p.ini"));
  std::set<std::string> values;
  const auto keys = text.GetKeys("S");
  for (const auto key : keys) values.insert(std::string(text.Find("S", key).value_or("none")));
  EXPECT_LE(values.size(), 1U) << "round " << round;
  EXPECT_TRUE(keys.empty() || keys.size() == kKeys) << keys.size() << " keys, round " << round;
}

TEST(ProfileProcessTest, AWriterKilledAtAnyMomentLeavesTheOldOrTheNewFile) {
  const int rounds = Count("VEMRA_SOAK_KILLS", 40);
  const TempFolder folder;
  const std::string path = folder.Path("p.ini");
  WriteHostFile(folder.Host() / "p.ini", "");
  std::mt19937 random(11);
  int leftStaging = 0;
  for (int round = 0; round < rounds; ++round) {
    const pid_t writer = Start([&] { WriteGenerations(path); });
    ASSERT_GT(writer, 0);
    ::usleep(random() % 6000);
    ExpectOneGeneration(folder, round);  // while the writer is at work
    ::kill(writer, SIGKILL);
    ASSERT_TRUE(WIFSIGNALED(Wait(writer))) << "the writer failed in round " << round;
    ExpectOneGeneration(folder, round);
    if (FileCount(folder) == 2) ++leftStaging;
  }
  // What a killed writer left behind stands in nobody's way, and goes with the next write.
  EXPECT_TRUE(platform::WriteProfile("Other", "k", "1", path));
  EXPECT_EQ(FileCount(folder), 1U);
  ExpectOneGeneration(folder, rounds);
  RecordProperty("rounds_that_left_a_staging_file", leftStaging);
}

}  // namespace
}  // namespace vemra::test
