#include "Support/definition/BitArray.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "Support/foundation/File.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

using Bits = std::vector<bool>;

CTavoBitArray Make(const Bits& bits) {
  CTavoBitArray array(static_cast<std::int32_t>(bits.size()), nullptr);
  for (std::size_t i = 0; i < bits.size(); ++i) array.SetAt(static_cast<int>(i), bits[i] ? 1 : 0);
  return array;
}

Bits BitsOf(const CTavoBitArray& array) {
  Bits bits(static_cast<std::size_t>(array.GetSize()));
  for (std::size_t i = 0; i < bits.size(); ++i) bits[i] = array.GetAt(static_cast<int>(i)) != 0;
  return bits;
}

Bits RandomBits(std::mt19937& random, std::size_t size) {
  const unsigned density = 1U << (random() % 8);
  Bits bits(size);
  for (std::size_t i = 0; i < size; ++i) bits[i] = random() % density == 0;
  return bits;
}

// Every scan against the plain one.
void ExpectScans(const CTavoFixedBitArray& array, const Bits& bits) {
  std::int32_t count = 0;
  std::int32_t last = -1;
  for (std::int32_t i = 0; i < static_cast<std::int32_t>(bits.size()); ++i) {
    ASSERT_EQ(array.GetPrevious(i), last) << i;
    if (!bits[static_cast<std::size_t>(i)]) continue;
    ASSERT_EQ(array.GetNext(last), i);
    last = i;
    ++count;
  }
  EXPECT_EQ(array.GetNext(last), -1);
  EXPECT_EQ(array.GetTrueCount(), count);
  last = -1;
  array.ForEachSetBit([&](std::int32_t index) {
    EXPECT_EQ(index, array.GetNext(last));
    last = index;
    --count;
  });
  EXPECT_EQ(count, 0);
  EXPECT_EQ(array.GetLast(), last);
  EXPECT_EQ(array.GetFirst(), array.GetNext(-1));
}

struct SetOperation {
  void (*apply)(CTavoBitArray& a, const CTavoBitArray& b);
  bool (*plain)(bool a, bool b);
};
constexpr SetOperation kSetOperations[] = {
    {[](auto& a, auto& b) { a |= b; }, [](bool a, bool b) { return a || b; }},
    {[](auto& a, auto& b) { a &= b; }, [](bool a, bool b) { return a && b; }},
    {[](auto& a, auto& b) { a -= b; }, [](bool a, bool b) { return a && !b; }},
    {[](auto& a, auto& b) { a = a - b; }, [](bool a, bool b) { return b && !a; }}};

TEST(BitArrayTest, BehavesAsPlainBits) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(round);
    Bits bits = RandomBits(random, random() % 150);
    const Bits other = RandomBits(random, random() % 150);
    const auto index = static_cast<std::int32_t>(random() % 170);
    const auto at = static_cast<std::size_t>(index);
    const std::size_t size = bits.size();
    CTavoBitArray array = Make(bits);
    const CTavoBitArray argument = Make(other);
    const std::function<void()> kOperations[] = {
        [&] {
          array.SetAt(index, argument);
          bits.resize(std::max(size, at + other.size()));
          std::copy(other.begin(), other.end(), bits.begin() + index);
        },
        [&] {
          array.InsertAt(index, argument);
          bits.resize(std::max(size, at));
          bits.insert(bits.begin() + index, other.begin(), other.end());
        },
        [&] {
          array.InsertAt(index, 1);
          bits.resize(std::max(size, at));
          bits.insert(bits.begin() + index, true);
          if (at >= size && bits.size() % 8 == 0) bits.push_back(false);
        },
        [&] {
          array.RemoveAt(3, static_cast<std::uint32_t>(index));
          bits.resize(at > size ? 0 : size - at);
        },
        [&] {
          array.Reverse();
          bits.flip();
        },
        [&] {
          array.SetAll();
          bits.assign(size, true);
        },
        [&] {  // What is cut off must not come back within the same storage.
          array.SetSize(index / 2);
          array.SetSize(index);
          bits.resize(at / 2);
          bits.resize(at);
        },
        [&] {
          const SetOperation& set = kSetOperations[random() % std::size(kSetOperations)];
          set.apply(array, argument);
          bits.resize(std::max(size, other.size()));
          for (std::size_t i = 0; i < bits.size(); ++i) {
            bits[i] = set.plain(bits[i], i < other.size() && other[i]);
          }
        }};
    kOperations[random() % std::size(kOperations)]();
    ASSERT_EQ(BitsOf(array), bits);
    ASSERT_NO_FATAL_FAILURE(ExpectScans(array, bits));
  }
}

TEST(BitArrayTest, FixedArrayBehavesAsPlainBits) {
  std::mt19937 random(2);
  for (int round = 0; round < 30; ++round) {
    SCOPED_TRACE(round);
    const Bits x = RandomBits(random, CTavoFixedBitArray::kBits);
    const Bits y = RandomBits(random, CTavoFixedBitArray::kBits);
    CTavoFixedBitArray a;
    CTavoFixedBitArray b;
    a.SetAt(0, Make(x));
    b.SetAt(0, Make(y));
    ASSERT_NO_FATAL_FAILURE(ExpectScans(a, x));
    const CTavoFixedBitArray difference = a - b;
    const CTavoFixedBitArray both = a & b;
    const CTavoFixedBitArray either = a | b;
    const CTavoFixedBitArray inverted = *!CTavoFixedBitArray(a);
    for (std::int32_t i = 0; i < CTavoFixedBitArray::kBits; ++i) {
      const auto at = static_cast<std::size_t>(i);
      ASSERT_EQ(difference.GetAt(i), y[at] && !x[at]) << i;
      ASSERT_EQ(both.GetAt(i), x[at] && y[at]) << i;
      ASSERT_EQ(either.GetAt(i), x[at] || y[at]) << i;
      ASSERT_EQ(inverted.GetAt(i), !x[at]) << i;
    }
  }
}

TEST(BitArrayTest, FixedArrayKeepsWithinItsBlock) {
  const std::vector<std::uint8_t> ones(4096, 0xFF);
  CTavoFixedBitArray array;
  array.MergeBitsAt(ones.data(), 2040, 9);
  array.SetBitsAt(ones.data(), 2048, 1);
  array.MergeBitsAt(ones.data(), 0, 0);
  array.SetAt(CTavoFixedBitArray::kBits, 1);
  array.SetAt(-1, 1);
  EXPECT_EQ(array.GetTrueCount(), 0);
  array.SetAt(16380, Make(Bits(20, true)));
  EXPECT_EQ(array.GetTrueCount(), 4);

  array.ResetAll();
  array.SetAt(8, 1);
  const std::uint8_t source[] = {0x80, 0x01};
  array.SetAt(16, 1);
  array.SetAt(17, 1);
  array.MergeBitsAt(source, 1, 2);
  EXPECT_EQ(array[8] != 0 && array[15] != 0, true) << "the first byte is merged";
  EXPECT_EQ(array.GetAt(17), 0) << "the second is replaced";

  const CTavoFixedBitArray without(ones.data(), 2049);
  EXPECT_EQ(without.GetFirst(), -1);
  EXPECT_EQ(without[5], 0);
  EXPECT_EQ(CTavoFixedBitArray(ones.data(), 2000, 48).GetFirst(), 384);
  EXPECT_EQ(CTavoFixedBitArray(ones.data(), 2000, 49).GetFirst(), -1);
}

TEST(BitArrayTest, KnowsItsCorners) {
  CTavoBitArray array(13, nullptr);
  array.SetAll();
  EXPECT_EQ(array.GetAt(13), 0);
  EXPECT_EQ(array.GetAt(9), 2) << "the mask, not 1";
  EXPECT_EQ(CTavoBitArray(3, "\xFF").GetTrueCount(), 3);
  EXPECT_THROW(array.InsertAt(INT32_MAX, 1), std::bad_alloc);
  EXPECT_EQ(array.GetSize(), 13);
}

class BitArrayRecordTest : public ::testing::Test {
 protected:
  int LoadBytes(const std::string& bytes, CTavoBitArray& array) {
    test::WriteHostFile(folder_.Host() / "bits", bytes);
    TavoFile file(folder_.Path("bits"), TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
    return array.Load(&file);
  }
  std::string Saved(const CTavoBitArray& array) {
    TavoFile file(folder_.Path("bits"), TavoFile::Access::kReadWrite,
                  TavoFile::Creation::kCreateTruncate);
    EXPECT_EQ(array.Save(&file), 1);
    file.Close();
    return test::ReadHostFile(folder_.Host() / "bits");
  }

  test::TempFolder folder_;
};

TEST_F(BitArrayRecordTest, TheByteLengthBecomesRightWithTheSize) {
  const std::string bytes = Saved(CTavoBitArray(13, "\x81\x10"));
  EXPECT_EQ(bytes, std::string("\x0D\0\0\0\x02\0\0\0\x81\x10", 10));
  EXPECT_EQ(Saved(CTavoBitArray()), std::string(8, '\0'));
  CTavoBitArray loaded(3, nullptr);
  ASSERT_EQ(LoadBytes(bytes, loaded), 1);
  EXPECT_EQ(loaded.GetTrueCount(), 2) << "still one byte long";
  EXPECT_NE(loaded.GetAt(12), 0);
  loaded.SetSize(13);
  EXPECT_EQ(Saved(loaded), bytes);
  ASSERT_EQ(LoadBytes(std::string("\0\0\0\0\x02\0\0\0\x81\x10", 10), loaded), 1);
  EXPECT_EQ(loaded.GetTrueCount(), 0) << "no size, no bits";
}

TEST_F(BitArrayRecordTest, FreeExtraActsOnAMuchTooLongByteLength) {
  const std::string bytes = Saved(CTavoBitArray(13, "\x81\x10"));
  CTavoBitArray loaded(256, nullptr);
  ASSERT_EQ(LoadBytes(bytes, loaded), 1);
  loaded.FreeExtra();
  EXPECT_EQ(Saved(loaded), std::string("\x0D\0\0\0\x04\0\0\0\x81\x10\0\0", 12)) << "kept: 32 bytes";
  loaded = CTavoBitArray(257, nullptr);
  ASSERT_EQ(LoadBytes(bytes, loaded), 1);
  loaded.FreeExtra();
  EXPECT_EQ(Saved(loaded), bytes) << "33 bytes are more than a word";
}

TEST_F(BitArrayRecordTest, BitsThatTheRecordLacksCountAsZero) {
  CTavoBitArray loaded;
  ASSERT_EQ(LoadBytes(std::string("\x40\0\0\0\x01\0\0\0\x81", 9), loaded), 1);
  CTavoBitArray target(64, nullptr);
  target.SetAll();
  target.SetAt(0, loaded);
  EXPECT_EQ(target.GetTrueCount(), 2);
  ASSERT_EQ(LoadBytes(std::string("\xFF\xFF\xFF\x7F\x01\0\0\0\x81", 9), loaded), 1);
  loaded.SetAll();
  EXPECT_EQ(loaded.GetAt(1000000), 0);
  EXPECT_LE(loaded.GetLast(), 31);
}

}  // namespace
}  // namespace vemra
