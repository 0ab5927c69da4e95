#include "programs/formats/CharacterReference.h"

#include <gtest/gtest.h>

namespace vemra {
namespace {

TEST(CharacterReferenceTest, ReadsWhatBrowsersRead) {
  constexpr auto kText = ReferencePlace::kText;
  constexpr auto kAttribute = ReferencePlace::kAttribute;
  const struct {
    const char* text;
    ReferencePlace place;
    char32_t code;
    std::size_t length;
  } kRows[] = {
      {"&amp;x", kText, '&', 5},
      {"&zwnj;", kText, 0x200C, 6},
      {"&thetasym;", kText, 0x3D1, 10},
      {"&hellip x", kText, 0, 0},  // only names of Latin-1 do without a semicolon
      {"&copy 2", kText, 0xA9, 5},
      {"&notit;", kText, 0xAC, 4},
      {"&apos;", kText, '\'', 6},
      {"&", kText, 0, 0},
      {"&;", kText, 0, 0},
      {"&copy=1", kAttribute, 0, 0},
      {"&copying", kAttribute, 0, 0},
      {"&copy\"", kAttribute, 0xA9, 5},
      {"&copy", kAttribute, 0xA9, 5},
      {"&#x41;", kText, 'A', 6},
      {"&#X2019", kText, 0x2019, 7},
      {"&#65z", kText, 'A', 4},
      {"&#;", kText, 0, 0},
      {"&#x;", kText, 0, 0},
      {"&#x", kText, 0, 0},
      {"&#0;", kText, 0xFFFD, 4},
      {"&#150;", kText, 0x2013, 6},
      {"&#129;", kText, ' ', 6},
      {"&#xD800;", kText, 0xFFFD, 8},
      {"&#x110000;", kText, 0xFFFD, 10},
      {"&#99999999999999999999;", kText, 0xFFFD, 23},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    const CharacterReference found = ReadCharacterReference(row.text, row.place);
    EXPECT_EQ(found.code, row.code);
    EXPECT_EQ(found.length, row.length);
  }
}

}  // namespace
}  // namespace vemra
