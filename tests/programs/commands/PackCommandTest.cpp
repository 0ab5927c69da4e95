#include <gtest/gtest.h>

#include "tests/programs/commands/RunVemra.h"

namespace vemra::commands {
namespace {

using PackCommandTest = VemraTest;

TEST_F(PackCommandTest, ShowsAPackAndItsBadLines) {
  const std::string file = File("Mine.pack");
  Write("Mine.pack",
        "[Character Set]\nCode Page=1251\n[Flags]\n192=A\n224=A\n'5'=D\n1=A\noops\n"
        "[Index]\n192=224\n'x'='y'\n[Sort]\n192-=1\n224=191\n"
        "[Query Language]\nAnd=\xC8\n");
  const Outcome text = RunVemra({"pack", file});
  EXPECT_EQ(text.exitCode, kUsage);
  EXPECT_EQ(text.err, file + ":8: cannot be read and is skipped: oops\n");
  EXPECT_EQ(text.out.substr(0, text.out.find('\n')), "Mine: " + file + ", code page 1251");
  for (const char* const part :
       {"\n0  .     \\01 ", "\n3  .     .     .     .     .     5#", "\n7  .", " .>y ",
        "\nC  \xD0\x90>\xD0\xB0   .", "\nE  \xD0\xB0     .", "\nOrder: \\01 5 \xD0\x90=\xD0\xB0\n",
        "\nQuery words: \xD0\x98, OR, NOT\n"}) {
    EXPECT_NE(text.out.find(part), std::string::npos) << part << text.out;
  }
  const Json json = Json::parse(RunVemra({"pack", "--json", file}).out);
  EXPECT_EQ(json["bytes"][192], (Json{{"byte", 192}, {"flags", 3}, {"index", 224}, {"sort", 191}}));
  EXPECT_EQ(json["badLines"], (Json{{{"line", 8}, {"text", "oops"}}}));
  EXPECT_EQ(json["and"], "\xD0\x98");
}

TEST_F(PackCommandTest, FindsTheProgramsOwnPacks) {
  const Outcome greek = RunVemra({"pack", "Greek", "--json"});
  EXPECT_EQ(greek.exitCode, kDone) << greek.err;
  EXPECT_EQ(Json::parse(greek.out)["codePage"], 1253);
  const Outcome none = RunVemra({"pack", "Klingon"});
  EXPECT_EQ(none.exitCode, kUsage);
  EXPECT_NE(none.err.find(" Greek "), std::string::npos) << none.err;
}

}  // namespace
}  // namespace vemra::commands
