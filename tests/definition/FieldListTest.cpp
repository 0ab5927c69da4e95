#include "Support/definition/FieldList.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

namespace vemra {
namespace {

std::vector<int> NumbersIn(const CTavoFieldList& list) {
  std::vector<int> numbers;
  for (POSITION position = list.GetStartPosition(); position != 0;) {
    numbers.push_back(list.GetNextFieldno(position));
  }
  return numbers;
}

TEST(FieldListTest, YieldsWhatWasSetBelow125) {
  std::mt19937 random(3);
  for (int round = 0; round < 500; ++round) {
    CTavoFieldList list;
    std::set<int> expected;
    for (unsigned i = random() % 40; i > 0; --i) {
      const auto fieldno = static_cast<int>(random() % 128);
      list.Set(fieldno);
      if (fieldno < kMaxFields) expected.insert(fieldno);
    }
    ASSERT_EQ(NumbersIn(list), std::vector<int>(expected.begin(), expected.end()));
    ASSERT_EQ(NumbersIn(~list).size(), kMaxFields - expected.size());
  }
}

TEST(FieldListTest, BitsAboveTheLastFieldExistButAreNotYielded) {
  CTavoFieldList list;
  list.SetAll();
  for (int fieldno = 125; fieldno < 128; ++fieldno) list.Reset(fieldno);
  list.Invert();
  EXPECT_EQ(list.IsEmpty(), 0);
  EXPECT_EQ(list.GetStartPosition(), 0U);
  char bytes[16];
  list.CopyBytes(bytes, sizeof bytes);
  EXPECT_EQ(bytes[15], '\xE0');

  POSITION last = 125;
  EXPECT_EQ(list.GetNextFieldno(last), 124);
  EXPECT_EQ(last, 0U);
}

}  // namespace
}  // namespace vemra
