#include "Support/platform/posix/HostName.h"

#include <gtest/gtest.h>

#include "Support/foundation/Signature32.h"

namespace vemra::platform {
namespace {

TEST(HostNameTest, TheFirstLabelInCapitalsIsTheComputersName) {
  const std::pair<const char*, const char*> kRows[] = {{"server7", "SERVER7"},
                                                       {"server7.example.org", "SERVER7"},
                                                       {"a b;c\t", "A-B-C-"},
                                                       {"exactly-fifteen", "EXACTLY-FIFTEEN"},
                                                       {"", ""},
                                                       {".org", ""}};
  for (const auto& [host, name] : kRows) EXPECT_EQ(ComputerNameOf(host), name) << host;
}

TEST(HostNameTest, LongNamesThatBeginAlikeStayApart) {
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08X",
                static_cast<unsigned>(signature32("SEARCH-SERVER-FRANKFURT-1")));
  EXPECT_EQ(ComputerNameOf("search-server-frankfurt-1.example.org"),
            "SEARCH-SERV" + std::string(digits + 4));
  EXPECT_NE(ComputerNameOf("search-server-frankfurt-1"),
            ComputerNameOf("search-server-frankfurt-2"));
}

}  // namespace
}  // namespace vemra::platform
