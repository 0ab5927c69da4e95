#include "Support/services/Trace.h"

#include <gtest/gtest.h>

#include <thread>

#include "Support/foundation/Registry.h"
#include "tests/TestRegistry.h"
#include "tests/services/TextFile.h"

namespace vemra {
namespace {

constexpr char kKey[] = "Vemra Info\\Trace";

class TraceTest : public testing::Test {
 protected:
  void Configure(std::uint32_t module, std::uint32_t level) {
    ASSERT_EQ(SetTavoValue(kKey, "TraceFilePath", registry_.Folder().Path("t.txt")), 1);
    ASSERT_EQ(SetTavoValue(kKey, "Module", module), 1);
    ASSERT_EQ(SetTavoValue(kKey, "Level", level), 1);
  }
  std::filesystem::path File() const { return registry_.Folder().Host() / "t.txt"; }

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
  std::vector<std::string> expected;
  TavoTrace trace;
  int line = 0;
  for (const auto& row : kRows) {
    const std::string number = std::to_string(++line);
    trace.TraceEx("a.cpp", line, row.module, row.level, "%s %d", "m", line);
    if (row.written) expected.push_back(" a.cpp(" + number + "): m " + number);
  }
  trace.Trace("Support\\b", 7, 0x80, 2, "own line end\n");
  expected.insert(expected.end(), {" Support\\b(7): own line end", ""});
  std::vector<std::string> written = test::ReadLines(File());
  for (std::string& text : written) {
    // The date and time are as long in every line: "03/07/24 09:05:03".
    if (text.empty()) continue;
    EXPECT_EQ(text.find_first_not_of("0123456789/: "), 18U) << text;
    text.erase(0, 17);
  }
  EXPECT_EQ(written, expected);
}

TEST_F(TraceTest, AppendsAndDeniesOtherWriters) {
  Configure(1, 0);
  test::WriteHostFile(File(), "before\n");
  TavoTrace first;
  TavoTrace second;  // says on the standard output that it has no file
  EXPECT_FALSE(second.IsTraced(1, 9));
  second.Trace("s", 1, 1, 9, "lost");
  first.Trace("s", 1, 1, 9, "kept");
  const std::vector<std::string> lines = test::ReadLines(File());
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], "before");
  EXPECT_TRUE(lines[1].ends_with(" s(1): kept"));
}

TEST_F(TraceTest, IsOffWithoutAFileName) {
  ASSERT_EQ(SetTavoValue(kKey, "Module", 0xffffffffU), 1);
  EXPECT_FALSE(TavoTrace().IsTraced(0x80, 9));
}

TEST_F(TraceTest, ThreadsNeverTearLines) {
  Configure(1, 0);
  const std::string message(300, 'x');
  TavoTrace trace;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; i++) {
    threads.emplace_back([&] {
      for (int line = 0; line < 100; line++) trace.Trace("s", 1, 1, 0, message);
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::vector<std::string> lines = test::ReadLines(File());
  EXPECT_EQ(lines.size(), 400U);
  for (const std::string& line : lines) ASSERT_EQ(line.substr(17), " s(1): " + message);
}

}  // namespace
}  // namespace vemra
