#include "Support/platform/posix/HostName.h"

#include <gtest/gtest.h>

#include "Support/foundation/Signature32.h"

namespace vemra::platform {
namespace {

TEST(HostNameTest, TheFirstLabelInCapitalsIsTheComputersName) {
  struct Row {
    const char* host;
    const char* name;
  };
  for (const Row& row : {Row{"server7", "SERVER7"}, Row{"server7.example.org", "SERVER7"},
                         Row{"exactly-fifteen", "EXACTLY-FIFTEEN"}, Row{"a b;c\t", "A-B-C-"},
                         Row{"", ""}, Row{".org", ""}}) {
    EXPECT_EQ(ComputerNameOf(row.host), row.name) << row.host;
  }
}

TEST(HostNameTest, LongNamesThatBeginAlikeStayApart) {
  const std::string first = ComputerNameOf("search-server-frankfurt-1.example.org");
  const std::string second = ComputerNameOf("search-server-frankfurt-2.example.org");
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08X",
                static_cast<unsigned>(signature32("SEARCH-SERVER-FRANKFURT-1")));
  EXPECT_EQ(first, "SEARCH-SERV" + std::string(digits + 4));
  EXPECT_EQ(second.size(), 15U);
  EXPECT_NE(first, second);
}

}  // namespace
}  // namespace vemra::platform
