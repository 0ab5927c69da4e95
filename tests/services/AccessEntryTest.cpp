#include "Support/services/AccessEntry.h"

#include <gtest/gtest.h>

namespace vemra {
namespace {

DateTime At(int hour, int minute, int second, int day, int month) {
  return DateTime::FromLocal({2026, month, day, hour, minute, second, 0});
}

TEST(AccessEntryTest, LinesHaveFixedColumns) {
  const struct {
    AccessEntry entry;
    std::string line;
  } kRows[] = {
      {{{}, At(14, 3, 7, 15, 11), At(14, 33, 7, 15, 11), 0x1A4, "[Indexing]"},
       "[Indexing]       1A4      14:03:07 15/11/2026 expires 14:33:07 15/11/2026\n"},
      {{{}, At(0, 0, 0, 1, 1), At(23, 59, 59, 31, 12), 0, "[IndexRequest]"},
       "[IndexRequest]   0        00:00:00 01/01/2026 expires 23:59:59 31/12/2026\n"},
      {{{}, At(9, 5, 3, 15, 11), At(9, 5, 3, 15, 11), 0xDEADBEEF, "SIXTEENCHARACTER"},
       "SIXTEENCHARACTER DEADBEEF 09:05:03 15/11/2026 expires 09:05:03 15/11/2026\n"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(FormatAccessLine(row.entry), row.line);
    AccessEntry read;
    EXPECT_EQ(ParseAccessLine(row.line.c_str(), read), 1);
    EXPECT_EQ(FormatAccessLine(read), row.line);
    EXPECT_EQ(read.clockTime, row.entry.lastUpdate);
  }
}

// What scanf makes of a line is held against this by the fuzz target of access files.
TEST(AccessEntryTest, ReadsWhatOthersWrite) {
  const std::string times = " 1:2:3 4/5/2026 expires 6:7:8 9/10/2026";
  const struct {
    std::string line;
    const char* name;  // null: refused
    std::uint32_t threadId;
    DateTime expires = At(6, 7, 8, 9, 10);
  } kRows[] = {
      {" \tA  01\t 1: 2: 3  4/ 5/ 2026\vexpires\r6:7:8 9/10/2026", "A", 1},
      {"A 1 1:2:3 4/5/2026expires6:7:8 9/10/2026, or later\n", "A", 1},
      {"a 0x1f" + times, "a", 0x1F},
      {"a -1 1:2:3 4/5/2026 expires +6:7:8 9/10/2026\n", "a", 0xFFFFFFFF},
      {"a 123456789" + times, "a", 0x23456789},
      {"a 1 1:2:3 4/5/2026 expires 25:61:61 31/11/2026\n", "a", 1, At(2, 2, 1, 2, 12)},
      {"SIXTEENCHARACTERF" + times, "SIXTEENCHARACTER", 0xF},
      {"SEVENTEENCHARACTERS 1" + times, nullptr, 0},
      {"\n", nullptr, 0},
      {"A G" + times, nullptr, 0},
      {"A 1 1 :2:3 4/5/2026 expires 6:7:8 9/10/2026\n", nullptr, 0},
      {"A 1 1:2:3 4/5/2026 Expires 6:7:8 9/10/2026\n", nullptr, 0},
      {"A 1 1:2:3 4/5/2026 expires 6:7:8 9/10/\n", nullptr, 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.line);
    AccessEntry read;
    ASSERT_EQ(ParseAccessLine(row.line.c_str(), read), row.name == nullptr ? 0 : 1);
    if (row.name == nullptr) continue;
    EXPECT_EQ(read.name, row.name);
    EXPECT_EQ(read.threadId, row.threadId);
    EXPECT_EQ(read.expires, row.expires);
  }
}

TEST(AccessEntryTest, NumbersBeyondEveryDateDoNoHarm) {
  AccessEntry read;
  EXPECT_EQ(ParseAccessLine("A FFFFFFFFFFFFFFFFFF1 99999999999:-99999999999:99999999999999999999 "
                            "99999999999/99999999999/99999999999 expires 1:1:1 1/1/-99999999999\n",
                            read),
            1);
  EXPECT_EQ(read.threadId, 0xFFFFFFF1);
  AccessEntry again;
  EXPECT_EQ(ParseAccessLine(FormatAccessLine(read).c_str(), again), 1);
}

}  // namespace
}  // namespace vemra
