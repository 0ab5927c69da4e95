#include "Support/services/Trace.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "Support/foundation/Registry.h"
#include "tests/TestRegistry.h"

namespace vemra {
namespace {

constexpr char kKey[] = "Vemra Info\\Trace";

class TraceTest : public testing::Test {
 protected:
  std::string Bytes() const {  // as text
    std::string bytes = test::ReadHostFile(registry_.Folder().Host() / "t.txt");
    std::erase(bytes, '\r');
    return bytes;
  }
  void Configure(std::uint32_t module, std::uint32_t level) {
    ASSERT_EQ(SetTavoValue(kKey, "TraceFilePath", registry_.Folder().Path("t.txt")), 1);
    ASSERT_EQ(SetTavoValue(kKey, "Module", module), 1);
    ASSERT_EQ(SetTavoValue(kKey, "Level", level), 1);
  }

  test::TestRegistry registry_;
};

TEST_F(TraceTest, WritesWhatPassesLevelAndMask) {
  Configure(0x82, 2);
  const struct {
    std::uint32_t module;
    std::uint32_t level;
    bool written;
  } kRows[] = {{0x80, 2, true},  {0x80, 1, false}, {0x80, 9, true},
               {0x40, 9, false}, {0xff, 2, true},  {0, 9, false}};
  std::string expected;
  {
    TavoTrace trace;
    int line = 0;
    for (const auto& row : kRows) {
      ++line;
      trace.TraceEx("a.cpp", line, row.module, row.level, "%s %d", "m", line);
      if (row.written) {
        expected += " a.cpp(" + std::to_string(line) + "): m " + std::to_string(line) + "\n";
      }
    }
    trace.Trace("Support\\b", 7, 0x80, 2, "own line end\n");
    expected += " Support\\b(7): own line end\n\n";
  }
  std::istringstream lines(Bytes());
  std::string written;
  for (std::string line; std::getline(lines, line);) {
    // The date and time are as long in every line: "03/07/24 09:05:03".
    if (!line.empty()) {
      EXPECT_EQ(line.find_first_not_of("0123456789/: "), 18U) << line;
      line.erase(0, 17);
    }
    written += line + "\n";
  }
  EXPECT_EQ(written, expected);
}

TEST_F(TraceTest, AppendsAndDeniesOtherWriters) {
  Configure(1, 0);
  test::WriteHostFile(registry_.Folder().Host() / "t.txt", "before\n");
  TavoTrace first;
  TavoTrace second;  // says on the standard output that it has no file
  EXPECT_FALSE(second.IsTraced(1, 9));
  second.Trace("s", 1, 1, 9, "lost");
  first.Trace("s", 1, 1, 9, "kept");
  EXPECT_TRUE(Bytes().starts_with("before\n"));
  EXPECT_TRUE(Bytes().ends_with("s(1): kept\n"));
  EXPECT_EQ(Bytes().find("lost"), std::string::npos);
}

TEST_F(TraceTest, IsOffWithoutAFileName) {
  ASSERT_EQ(SetTavoValue(kKey, "Module", 0xffffffffU), 1);
  const TavoTrace trace;
  EXPECT_FALSE(trace.IsTraced(0x80, 9));
}

TEST_F(TraceTest, ThreadsNeverTearLines) {
  Configure(1, 0);
  const std::string message(300, 'x');
  {
    TavoTrace trace;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; i++) {
      threads.emplace_back([&] {
        for (int line = 0; line < 100; line++) trace.Trace("s", 1, 1, 0, message);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  std::istringstream lines(Bytes());
  int count = 0;
  for (std::string line; std::getline(lines, line); count++) {
    ASSERT_EQ(line.substr(17), " s(1): " + message);
  }
  EXPECT_EQ(count, 400);
}

}  // namespace
}  // namespace vemra
