#include "Support/foundation/Registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "Support/platform/PrivateProfile.h"
#include "tests/TestRegistry.h"

namespace vemra {
namespace {

using Texts = std::vector<std::string>;

class RegistryTest : public testing::Test {
 protected:
  test::TestRegistry registry_;
};

TEST_F(RegistryTest, NothingIsThereAtFirst) {
  std::string text = "old";
  Texts names;
  EXPECT_EQ(GetTavoKey("Vemra Server", RegistryAccess::kRead), nullptr);
  EXPECT_EQ(GetTavoValue("Vemra Server", "DBRoot", text, 260), 0);
  EXPECT_EQ(DeleteTavoValue("Vemra Server", "DBRoot"), 0);
  EXPECT_EQ(EnumKeys("Vemra Server", names), 0);
  EXPECT_EQ(GetListOfDBNames(names), 0);
  EXPECT_EQ(GetDBRoot(text), 0);
  EXPECT_EQ(text, "old");
}

TEST_F(RegistryTest, KeepsTheTypeOfEachValue) {
  const std::string bytes("\0\xff\n", 3);
  ASSERT_EQ(SetTavoValue("Key\\Sub", "bytes", bytes.data(), 3), 1);
  ASSERT_EQ(SetTavoValue("Key\\Sub", "empty", bytes.data(), 0), 1);
  ASSERT_EQ(SetTavoValue("Key\\Sub", "number", 0x80000001U), 1);
  ASSERT_EQ(SetTavoValue("Key\\Sub", "text", std::string(260, 'x')), 1);

  std::string text;
  EXPECT_EQ(GetTavoValue("key\\SUB", "TEXT", text, 260), 1);
  EXPECT_EQ(text, std::string(260, 'x'));
  EXPECT_EQ(GetTavoValue("Key\\Sub", "text", text, 259), 0);
  EXPECT_EQ(GetTavoValue("Key\\Sub", "number", text, 260), 0);

  std::uint32_t number = 7;
  EXPECT_EQ(GetTavoValue("Key\\Sub", "bytes", number), 0);
  EXPECT_EQ(number, 7U);
  EXPECT_EQ(GetTavoValue("Key\\Sub", "number", number), 1);
  EXPECT_EQ(number, 0x80000001U);

  char buffer[4] = {};
  std::uint32_t size = 2;
  EXPECT_EQ(GetTavoValue("Key\\Sub", "bytes", buffer, size), 0);
  EXPECT_EQ(size, 3U);
  EXPECT_EQ(GetTavoValue("Key\\Sub", "bytes", buffer, size), 1);
  EXPECT_EQ(std::string(buffer, size), bytes);
  EXPECT_EQ(GetTavoValue("Key\\Sub", "empty", buffer, size), 1);
  EXPECT_EQ(size, 0U);

  std::vector<RegistryValue> values;
  EXPECT_EQ(GetTavoKey("Key\\Sub", RegistryAccess::kRead)->GetValues(values), 1);
  ASSERT_EQ(values.size(), 4U);
  EXPECT_TRUE(std::any_of(values.begin(), values.end(), [](const RegistryValue& value) {
    return value.name == "number" && value.type == RegistryType::kNumber &&
           value.data == std::string("\1\0\0\x80", 4);
  }));
  ASSERT_EQ(SetTavoValue("Key\\Sub", "number", "now text"), 1);
  EXPECT_EQ(GetTavoValue("Key\\Sub", "number", number), 0);
}

TEST_F(RegistryTest, EnumeratesUpToTheFirstLongValue) {
  // Sorted by name as well, since not every system keeps the order in which values were set.
  ASSERT_EQ(SetTavoValue("Key", "1", "one"), 1);
  ASSERT_EQ(SetTavoValue("Key", std::string(255, '2'), std::string(255, 'x')), 1);
  ASSERT_EQ(SetTavoValue("Key", "3", ""), 1);
  ASSERT_EQ(SetTavoValue("Key", "4", std::string(256, 'x')), 1);
  ASSERT_EQ(SetTavoValue("Key", "5", "five"), 1);
  Texts values = {"before"};
  EXPECT_EQ(EnumValues("Key", values), 1);
  EXPECT_EQ(values, (Texts{"before", "one", std::string(255, 'x'), ""}));
  ASSERT_EQ(DeleteTavoValue("Key", "4"), 1);
  ASSERT_EQ(SetTavoValue("Key", std::string(256, '4'), "x"), 1);
  values.clear();
  EXPECT_EQ(EnumValues("Key", values), 1);
  EXPECT_GE(values.size(), 3U);
  EXPECT_LE(values.size(), 4U);
}

TEST_F(RegistryTest, DeletesOnlyKeysWithoutChildren) {
  ASSERT_EQ(SetTavoValue("Key\\b", "v", 1U), 1);
  ASSERT_NE(CreateTavoKey("Key\\A", RegistryAccess::kWrite), nullptr);
  ASSERT_EQ(SetTavoValue("Key\\b\\c", "v", 1U), 1);
  const auto held = GetTavoKey("Key\\A", RegistryAccess::kReadWrite);
  Texts names;
  EXPECT_EQ(EnumKeys("Key", names), 1);
  EXPECT_EQ(names, (Texts{"A", "b"}));
  EXPECT_EQ(DeleteTavoKey("Key", ""), 0);
  EXPECT_EQ(DeleteTavoKey("Key", "b"), 0);
  EXPECT_EQ(DeleteTavoKey("Key", "none"), 0);
  EXPECT_EQ(DeleteTavoKey("Key\\b", "C"), 1);
  EXPECT_EQ(DeleteTavoKey("Key", "b"), 1);
  EXPECT_EQ(DeleteTavoKey("Key", "a"), 1);
  EXPECT_EQ(held->SetValue({"v", RegistryType::kNumber, "1234"}), 0);
  names.clear();
  EXPECT_EQ(EnumKeys("Key", names), 1);
  EXPECT_EQ(names, Texts());
}

TEST_F(RegistryTest, ListsDatabasesInOrder) {
  Texts written;
  for (int i = 1; i <= 12; i++) written.push_back("db" + std::to_string(i));
  ASSERT_EQ(WriteListOfDBNames(written), 1);
  Texts names;
  EXPECT_EQ(GetListOfDBNames(names), 1);
  EXPECT_EQ(names, written);
  // One value too many is asked for as one more database.
  ASSERT_EQ(SetTavoValue("Vemra Server\\Databases", "Other", "x"), 1);
  names.clear();
  EXPECT_EQ(GetListOfDBNames(names), 0);
  EXPECT_EQ(names, written);
  EXPECT_EQ(DeleteListOfDBNames(), 0);
  names.clear();
  EXPECT_EQ(EnumValues("Vemra Server\\Databases", names), 1);
  EXPECT_EQ(names, Texts{"x"});
}

TEST_F(RegistryTest, DatabaseRootComesFromTheHostProfile) {
  const std::string profile = registry_.Folder().Path("host.ini");
  SetHostProfile(profile);
  ASSERT_TRUE(platform::WriteProfile("Vemra Server\\Databases", "DBRoot", "C:\\db", profile));
  std::string root;
  EXPECT_EQ(GetDBRoot(root), 0);  // no such key yet
  ASSERT_EQ(WriteListOfDBNames({}), 1);
  EXPECT_EQ(GetDBRoot(root), 1);
  EXPECT_EQ(root, "C:\\db");
  SetHostProfile("");
  EXPECT_TRUE(GetHostProfile().ends_with(".ini"));
}

TEST_F(RegistryTest, ThreadsLoseNothing) {
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int thread = 0; thread < 4; thread++) {
    threads.emplace_back([thread] {
      for (std::uint32_t i = 0; i < 25; i++) {
        const std::string name = std::to_string(thread) + "-" + std::to_string(i);
        std::uint32_t read = 0;
        EXPECT_EQ(SetTavoValue("Key\\" + std::to_string(i), name, i), 1);
        EXPECT_EQ(GetTavoValue("Key\\" + std::to_string(i), name, read), 1);
        EXPECT_EQ(read, i);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace vemra
