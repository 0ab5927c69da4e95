#include "Support/services/AccessLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vemra {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> Cut(std::string_view text) {
  AccessLines lines(text);
  std::vector<std::string> found;
  for (const char* line = nullptr; lines.Next(&line);) found.emplace_back(line);
  return found;
}

TEST(AccessLinesTest, CutsAsABufferOf100BytesDoes) {
  const std::string longest(98, 'x');
  EXPECT_THAT(Cut(""), ElementsAre());
  EXPECT_THAT(Cut("a\n\nb"), ElementsAre("a\n", "\n", "b"));
  EXPECT_THAT(Cut("a\r\nb\r\n\r"), ElementsAre("a\n", "b\n", "\r"));
  EXPECT_THAT(Cut(longest + "\n" + longest + "\r\n"), ElementsAre(longest + "\n", longest + "\n"));
  EXPECT_THAT(Cut(longest + "x\ny\n"), ElementsAre(longest + "x", "\n", "y\n"));
  EXPECT_THAT(Cut(longest + "xy\n"), ElementsAre(longest + "x", "y\n"));
  EXPECT_THAT(Cut(std::string_view("a\0b\n\0c", 6)), ElementsAre("a", ""));
}

// Wherever the system ends a process between two pages, the lines before and after are whole.
TEST(AccessLinesTest, NoLineCrossesAPage) {
  for (std::size_t room = 2; room <= 200; ++room) {  // one byte is never left
    for (std::size_t length = 60; length <= 99; ++length) {
      SCOPED_TRACE(testing::Message() << length << " bytes in " << room);
      std::string text;
      FillAccessText(kAccessPage - room, text);
      AddAccessLine(std::string(length - 1, 'x') + "\n", text);
      int found = 0;
      for (const std::string& line : Cut(text)) {
        ASSERT_EQ(line.back(), '\n');
        if (line.front() == ';') continue;
        ASSERT_EQ(line.size(), length);
        ++found;
      }
      EXPECT_EQ(found, 1);
      if (text.size() > kAccessPage) {
        EXPECT_EQ(text[kAccessPage - 1], '\n');
      }
    }
  }
}

TEST(AccessLinesTest, FillsUpWithComments) {
  for (std::size_t size = 2; size < 3 * kAccessPage; size += size < 400 ? 1 : 97) {
    SCOPED_TRACE(size);
    std::string text = "A\n";
    FillAccessText(size, text);
    ASSERT_EQ(text.size(), size);
    const std::vector<std::string> lines = Cut(text);
    for (std::size_t i = 1; i < lines.size(); ++i) {
      ASSERT_EQ(lines[i].front(), ';');
      ASSERT_TRUE(lines[i].back() == '\n' || i + 1 == lines.size());
    }
  }
}

}  // namespace
}  // namespace vemra
