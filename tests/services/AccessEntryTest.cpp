#include "Support/services/AccessEntry.h"

#include <gtest/gtest.h>

namespace vemra {
namespace {

DateTime At(int hour, int minute, int second, int day = 15, int month = 11, int year = 2026) {
  return DateTime::FromLocal({year, month, day, hour, minute, second, 0});
}

AccessEntry Entry(const std::string& name, std::uint32_t threadId, DateTime last, DateTime until) {
  return {last, last, until, threadId, name};
}

TEST(AccessEntryTest, LinesHaveFixedColumns) {
  struct Row {
    AccessEntry entry;
    std::string line;
  };
  const Row rows[] = {
      {Entry("[Indexing]", 0x1A4, At(14, 3, 7), At(14, 33, 7)),
       "[Indexing]       1A4      14:03:07 15/11/2026 expires 14:33:07 15/11/2026\n"},
      {Entry("[IndexRequest]", 0, At(0, 0, 0, 1, 1), At(23, 59, 59, 31, 12)),
       "[IndexRequest]   0        00:00:00 01/01/2026 expires 23:59:59 31/12/2026\n"},
      {Entry("SIXTEENCHARACTER", 0xDEADBEEF, At(9, 5, 3), At(9, 5, 3)),
       "SIXTEENCHARACTER DEADBEEF 09:05:03 15/11/2026 expires 09:05:03 15/11/2026\n"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FormatAccessLine(row.entry), row.line);
    AccessEntry read;
    EXPECT_EQ(ParseAccessLine(row.line.c_str(), read), 1);
    EXPECT_EQ(read.name, row.entry.name);
    EXPECT_EQ(read.threadId, row.entry.threadId);
    EXPECT_EQ(read.lastUpdate, row.entry.lastUpdate);
    EXPECT_EQ(read.expires, row.entry.expires);
    EXPECT_EQ(read.clockTime, row.entry.lastUpdate);
  }
}

TEST(AccessEntryTest, ReadsWhatOthersWrite) {
  struct Row {
    const char* label;
    const char* line;
    const char* name;
    std::uint32_t threadId;
    DateTime expires;
  };
  const Row rows[] = {
      {"no padding", "A 1 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n", "A", 1, At(6, 7, 8, 9, 10)},
      {"white space before fields", " \tA  01\t 1: 2: 3  4/ 5/ 2026\vexpires\r6:7:8 9/10/2026", "A",
       1, At(6, 7, 8, 9, 10)},
      {"none before the word", "A 1 1:2:3 4/5/2026expires6:7:8 9/10/2026\n", "A", 1,
       At(6, 7, 8, 9, 10)},
      {"lower case", "a ffff 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n", "a", 0xFFFF,
       At(6, 7, 8, 9, 10)},
      {"prefix", "a 0x1f 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n", "a", 0x1F, At(6, 7, 8, 9, 10)},
      {"sign", "a -1 1:2:3 4/5/2026 expires +6:7:8 9/10/2026\n", "a", 0xFFFFFFFF,
       At(6, 7, 8, 9, 10)},
      {"nine digits", "a 123456789 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n", "a", 0x23456789,
       At(6, 7, 8, 9, 10)},
      {"a rest", "a 1 1:2:3 4/5/2026 expires 6:7:8 9/10/2026, or later\n", "a", 1,
       At(6, 7, 8, 9, 10)},
      {"next month", "a 1 1:2:3 4/5/2026 expires 25:61:61 31/11/2026\n", "a", 1,
       At(2, 2, 1, 2, 12)},
      {"name and thread in one", "SIXTEENCHARACTERF 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n",
       "SIXTEENCHARACTER", 0xF, At(6, 7, 8, 9, 10)},
      {"longer name",
       "SEVENTEENCHARACTERS 1 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n",
       nullptr,
       0,
       {}},
      {"empty", "\n", nullptr, 0, {}},
      {"no thread", "A 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n", nullptr, 0, {}},
      {"no hexadecimal", "A G 1:2:3 4/5/2026 expires 6:7:8 9/10/2026\n", nullptr, 0, {}},
      {"blank before the colon", "A 1 1 :2:3 4/5/2026 expires 6:7:8 9/10/2026\n", nullptr, 0, {}},
      {"another word", "A 1 1:2:3 4/5/2026 Expires 6:7:8 9/10/2026\n", nullptr, 0, {}},
      {"13 fields", "A 1 1:2:3 4/5/2026 expires 6:7:8 9/10/\n", nullptr, 0, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    AccessEntry read;
    ASSERT_EQ(ParseAccessLine(row.line, read), row.name == nullptr ? 0 : 1);
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
