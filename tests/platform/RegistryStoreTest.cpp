#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/mman.h>

#include <random>
#include <string>
#include <vector>

#include "Support/foundation/Registry.h"
#include "tests/TestRegistry.h"
#include "tests/posix/Processes.h"

namespace vemra::test {
namespace {

// What a statement answers, row by row.
std::string Execute(const std::filesystem::path& file, const char* sql) {
  const auto addRow = [](void* to, int, char** values, char**) {
    *static_cast<std::string*>(to) += values[0];
    return 0;
  };
  std::string answer;
  sqlite3* database = nullptr;
  sqlite3_open(file.c_str(), &database);
  EXPECT_EQ(sqlite3_exec(database, sql, addRow, &answer, nullptr), SQLITE_OK) << sql;
  sqlite3_close(database);
  return answer;
}

void ExpectSound(const TestRegistry& registry) {
  EXPECT_EQ(Execute(registry.Folder().Host() / "registry.db", "PRAGMA integrity_check"), "ok");
}

// What is no store, or none that this version knows, makes every call fail and is left alone.
TEST(RegistryStoreTest, ForeignAndDamagedFilesAreRefused) {
  const TempFolder whole;
  platform::RedirectRegistry(whole.Host());
  for (std::uint32_t i = 0; i < 200; i++) SetTavoValue("Key\\" + std::to_string(i), "v", i);
  platform::RedirectRegistry({});
  const std::string bytes = ReadHostFile(whole.Host() / "registry.db");
  ASSERT_GT(bytes.size(), 8192U);

  const struct {
    const char* label;
    void (*make)(const std::filesystem::path& file, const std::string& bytes);
  } kRows[] = {
      {"a text", [](auto& file, auto&) { WriteHostFile(file, std::string(5000, '#')); }},
      {"a folder", [](auto& file, auto&) { std::filesystem::create_directory(file); }},
      {"a cut store", [](auto& file, auto& all) { WriteHostFile(file, all.substr(0, 6000)); }},
      {"an overwritten store",
       [](auto& file, auto& all) {
         WriteHostFile(file, all.substr(0, 100) + std::string(9000, 'x'));
       }},
      {"a later version",
       [](auto& file, auto& all) {
         WriteHostFile(file, all);
         Execute(file, "PRAGMA user_version = 2");
       }},
      {"another program's", [](auto& file, auto&) { Execute(file, "CREATE TABLE t(a)"); }},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    const TempFolder folder;
    const auto file = folder.Host() / "registry.db";
    row.make(file, bytes);
    const bool isFile = std::filesystem::is_regular_file(file);
    const std::string before = isFile ? ReadHostFile(file) : "";
    platform::RedirectRegistry(folder.Host());
    std::uint32_t number = 0;
    std::vector<std::string> names;
    EXPECT_EQ(SetTavoValue("Key\\new", "v", 1U), 0);
    EXPECT_EQ(GetTavoValue("Key\\7", "v", number), 0);
    EXPECT_EQ(EnumKeys("Key", names), 0);
    EXPECT_EQ(DeleteTavoKey("Key", "7"), 0);
    platform::RedirectRegistry({});
    EXPECT_TRUE(!isFile || ReadHostFile(file) == before);
  }
}

TEST(RegistryStoreTest, ProcessesThatMakeItAtOnceShareIt) {
  for (int round = 0; round < Count("VEMRA_SOAK_KILLS", 20); ++round) {
    const TestRegistry registry;
    std::vector<pid_t> writers;
    for (std::uint32_t process = 0; process < 4; ++process) {
      writers.push_back(Start(
          [&] { ::_exit(SetTavoValue("Key", std::to_string(process), process) == 0 ? 1 : 0); }));
    }
    for (const pid_t writer : writers) ASSERT_EQ(Wait(writer), 0) << "round " << round;
    std::vector<std::string> values;
    EXPECT_EQ(EnumValues("Key", values), 1);
    EXPECT_EQ(values.size(), writers.size());
  }
}

// The store is open in this process when it forks, so that each must open it anew.
TEST(RegistryStoreTest, ProcessesThatWriteAtOnceLoseNothing) {
  constexpr std::uint32_t kProcesses = 8;
  const auto values = std::uint32_t(Count("VEMRA_SOAK_WRITES", 30));
  const TestRegistry registry;
  ASSERT_EQ(SetTavoValue("Key", "parent", 1U), 1);
  std::vector<pid_t> writers;
  for (std::uint32_t process = 0; process < kProcesses; ++process) {
    writers.push_back(Start([&] {
      const std::string own = "Key\\" + std::to_string(process);
      for (std::uint32_t i = 0; i < values; ++i) {
        const std::string name = std::to_string(process) + "-" + std::to_string(i);
        std::uint32_t read = 0;
        const bool done = SetTavoValue("Key", name, i) != 0 && SetTavoValue(own, name, name) != 0 &&
                          GetTavoValue("Key", name, read) != 0 && read == i &&
                          (i % 2 != 0 || DeleteTavoValue(own, name) != 0);
        if (!done) ::_exit(1);
      }
    }));
  }
  for (const pid_t writer : writers) EXPECT_EQ(Wait(writer), 0);
  for (std::uint32_t process = 0; process < kProcesses; ++process) {
    for (std::uint32_t i = 0; i < values; ++i) {
      const std::string name = std::to_string(process) + "-" + std::to_string(i);
      std::uint32_t read = ~0U;
      ASSERT_EQ(GetTavoValue("Key", name, read), 1) << name;
      ASSERT_EQ(read, i);
    }
    std::vector<std::string> left;
    EXPECT_EQ(EnumValues("Key\\" + std::to_string(process), left), 1);
    EXPECT_EQ(left.size(), values / 2);
  }
  ExpectSound(registry);
}

// Counts on without end; done holds the last number that was stored for certain.
[[noreturn]] void CountOn(std::uint32_t* done) {
  for (std::uint32_t i = *done + 1;; ++i) {
    const std::string key = "Key\\" + std::to_string(i % 7);
    if (SetTavoValue(key, "v", i) == 0 || SetTavoValue("Key", "last", i) == 0) ::_exit(1);
    *static_cast<volatile std::uint32_t*>(done) = i;
    if (i % 5 == 0) DeleteTavoKey("Key", std::to_string(i % 7));
  }
}

TEST(RegistryStoreTest, AWriterKilledAtAnyMomentLosesNothingThatItStored) {
  const int rounds = Count("VEMRA_SOAK_KILLS", 40);
  const TestRegistry registry;
  void* const shared = ::mmap(nullptr, sizeof(std::uint32_t), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(shared, MAP_FAILED);
  auto* const done = static_cast<std::uint32_t*>(shared);
  ASSERT_EQ(SetTavoValue("Key", "last", 0U), 1);
  std::mt19937 random(5);
  for (int round = 0; round < rounds; ++round) {
    const pid_t writer = Start([&] { CountOn(done); });
    ::usleep(random() % 6000);
    ::kill(writer, SIGKILL);
    ASSERT_TRUE(WIFSIGNALED(Wait(writer))) << "the writer failed in round " << round;
    std::uint32_t last = 0;
    EXPECT_EQ(GetTavoValue("Key", "last", last), 1);
    EXPECT_TRUE(last == *done || last == *done + 1) << last << " is stored, " << *done << " said";
    *done = last;
  }
  ExpectSound(registry);
  ::munmap(shared, sizeof(std::uint32_t));
}

}  // namespace
}  // namespace vemra::test
