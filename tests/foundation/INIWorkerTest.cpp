#include "Support/foundation/INIWorker.h"

#include <gtest/gtest.h>

#include "Support/foundation/File.h"
#include "Support/foundation/INIException.h"
#include "Support/platform/Errors.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

using test::ReadHostFile;

class INIWorkerTest : public testing::Test {
 protected:
  INIWorkerTest() { worker_.section = "S"; }

  std::string Bytes() const { return ReadHostFile(folder_.Host() / "a.cfg"); }

  test::TempFolder folder_;
  const std::string path_ = folder_.Path("a.cfg");
  INIWorker worker_{path_};
};

TEST_F(INIWorkerTest, WritesItsTextForms) {
  EXPECT_EQ(worker_.PutNum("n", -5), 1);
  EXPECT_EQ(worker_.PutBoolean("b", 7), 1);
  EXPECT_EQ(worker_.PutBoolean("c", 0), 1);
  const DateTime time = DateTime::FromLocal({2024, 3, 7, 9, 5, 3});
  EXPECT_EQ(worker_.PutTime("t", time), 1);
  EXPECT_EQ(worker_.PutTimeSpan("s", TimeSpan(90061)), 1);
  EXPECT_EQ(worker_.PutColor("k", 0xffffffff), 1);
  EXPECT_EQ(worker_.PutStringArray("T", "l", {"x", "", "y"}), 1);
  EXPECT_EQ(Bytes(),
            "[S]\r\nn=-5\r\nb=YES\r\nc=NO\r\nt=09:05:03 07/03/2024\r\ns=90061\r\nk=4294967295\r\n"
            "[T]\r\nl Size=3\r\nl Item 1=x\r\nl Item 2=\r\nl Item 3=y\r\n");

  DateTime readTime;
  TimeSpan readSpan;
  std::uint32_t color = 0;
  std::vector<std::string> list = {"old"};
  EXPECT_EQ(worker_.GetTime("t", readTime), 1);
  EXPECT_EQ(readTime, time);
  EXPECT_EQ(worker_.GetTimeSpan("s", readSpan), 1);
  EXPECT_EQ(readSpan, TimeSpan(90061));
  EXPECT_EQ(worker_.GetColor("k", color), 1);
  EXPECT_EQ(color, 0xffffffff);
  EXPECT_EQ(worker_.GetStringArray("T", "l", list), 1);
  EXPECT_EQ(list, (std::vector<std::string>{"x", "", "y"}));
  ASSERT_EQ(worker_.PutNum("T", "l Size", 1000000000), 1);
  EXPECT_EQ(worker_.GetStringArray("T", "l", list), 0) << "an item is missing";
  EXPECT_EQ(list.size(), 3U);
}

TEST_F(INIWorkerTest, ReadsTextsAsEachKind) {
  const struct {
    const char* text;  // null: the key is missing
    int length;        // of GetString
    int hasNumber;
    int number;
    int hasBoolean;
    int boolean;
    int hasTime;
    int hasColor;
  } kRows[] = {
      {nullptr, 0, 0, 99, 0, 99, 0, 0},
      {"", 0, 0, 99, 0, 99, 0, 0},
      {"NONE-000", 0, 1, 0, 0, 99, 0, 0},
      {"12abc", 5, 1, 12, 0, 99, 0, 0},
      {"-7", 2, 1, -7, 0, 99, 0, 0},
      {"7", 1, 1, 7, 0, 99, 0, 1},
      {"4294967296", 10, -1, 0, 0, 99, 0, 0},
      {"000000000000000012345", 21, 1, 12, 0, 99, 0, 1},  // cut after 18 characters
      {"YES", 3, 1, 0, 1, 1, 0, 0},
      {"NO", 2, 1, 0, 1, 0, 0, 0},
      {"Yes", 3, 1, 0, 0, 99, 0, 0},
      {"YES NO NO", 9, 1, 0, 0, 99, 0, 0},
      {"1:2:3 4/5/2006", 14, 1, 1, 0, 99, 1, 0},
      {"1:2:3 4/5", 9, 1, 1, 0, 99, 0, 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text == nullptr ? "missing" : row.text);
    worker_.DeleteContents();
    if (row.text != nullptr) {
      ASSERT_EQ(worker_.PutString("k", row.text), 1);
    }
    std::string text = "old";
    int number = 99;
    int boolean = 99;
    DateTime time(5);
    std::uint32_t color = 5;
    EXPECT_EQ(worker_.GetString("S", "K", text), row.length);
    EXPECT_EQ(text, row.length == 0 ? "" : row.text);
    if (row.hasNumber >= 0) {  // else it depends on the system's atoi
      EXPECT_EQ(worker_.GetNum("k", number), row.hasNumber);
      EXPECT_EQ(number, row.number);
      EXPECT_EQ(worker_.GetNum("s", "k"), row.hasNumber * row.number);
      EXPECT_EQ(worker_.GetNum("k", number, -1), row.hasNumber);
      EXPECT_EQ(number, row.hasNumber == 0 ? -1 : row.number);
    }
    EXPECT_EQ(worker_.GetBoolean("k", boolean), row.hasBoolean);
    EXPECT_EQ(boolean, row.boolean);
    EXPECT_EQ(worker_.GetBoolean("k", boolean, 3), row.hasBoolean);
    EXPECT_EQ(boolean, row.hasBoolean == 0 ? 3 : row.boolean);
    EXPECT_EQ(worker_.GetTime("k", time), row.hasTime);
    EXPECT_EQ(time == DateTime(5), row.hasTime == 0);
    EXPECT_EQ(worker_.GetColor("k", color), row.hasColor);
    EXPECT_EQ(worker_.GetStringWithDefault("k", text, "D"), row.length);
    const bool missing = row.text == nullptr || worker_.IsDefString(row.text) != 0;
    EXPECT_EQ(text, missing ? "D" : row.text);
  }
}

TEST_F(INIWorkerTest, CutsStringsAt256Characters) {
  const std::string longText(5000, 'x');
  ASSERT_EQ(worker_.PutString("k", longText), 1);
  std::string text;
  EXPECT_EQ(worker_.GetString("k", text), 256);
  EXPECT_EQ(text, longText.substr(0, 256));
  EXPECT_EQ(worker_.GetWholeString("k", text), 5000);
}

TEST_F(INIWorkerTest, ThrowsOnlyWhenAsked) {
  INIWorker strict(path_, 1);
  strict.SetSection("S");
  ASSERT_EQ(strict.PutString("empty", ""), 1);
  int number = 0;
  std::string text;
  EXPECT_THROW(strict.GetNum("missing"), TavoINIException);
  EXPECT_THROW(strict.GetNum("missing", number), TavoINIException);
  EXPECT_THROW(strict.GetString("empty", text), TavoINIException);
  EXPECT_EQ(strict.GetString("missing", text), 0);  // the sentinel was read
  EXPECT_EQ(strict.GetNum("missing", number, 4), 0);
  EXPECT_EQ(number, 4);

  INIWorker unwritable(folder_.Path("no\\a.cfg"), 1);
  try {
    unwritable.PutNum("S", "k", 1);
    FAIL() << "no exception";
  } catch (const TavoINIException& error) {
    EXPECT_EQ(error.message, unwritable.GetPath());
  }
  EXPECT_EQ(INIWorker(unwritable.GetPath()).PutNum("S", "k", 1), 0);
}

TEST_F(INIWorkerTest, SentinelCanBeReplaced) {
  ASSERT_EQ(worker_.PutString("k", "NONE-000"), 1);
  std::string text;
  worker_.SetDefault("?");
  EXPECT_EQ(worker_.GetString("k", text), 8);
  EXPECT_EQ(worker_.GetString("missing", text), 0);
  const INIWorker copy(worker_);
  EXPECT_EQ(copy.IsDefString("?"), 1);
  worker_.SetDefault();
  EXPECT_EQ(worker_.GetString("k", text), 0);
}

TEST_F(INIWorkerTest, BatchIsStoredAtOnce) {
  ASSERT_EQ(worker_.PutNum("a", 1), 1);
  const std::string before = Bytes();
  {
    INIWorker::Batch batch(worker_);
    worker_.PutNum("a", 2);
    worker_.PutString("b", "x\ny ");
    INIWorker::Batch inner(worker_);
    worker_.PutStringArray("l", {"p"});
    EXPECT_EQ(inner.Commit(), 1);
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(worker_.GetNum("a"), 2);
    std::string text;
    EXPECT_EQ(worker_.GetString("b", text), 1);  // what will be read from the file
    EXPECT_EQ(INIWorker(path_).PutNum("other", "k", 5), 1);
  }
  EXPECT_EQ(worker_.GetNum("a"), 2);
  EXPECT_EQ(worker_.GetNum("l Size"), 1);
  EXPECT_EQ(worker_.GetNum("other", "k"), 5);  // kept, though written in between
}

TEST_F(INIWorkerTest, BatchKeepsWhatCannotBeStored) {
  ASSERT_EQ(worker_.PutNum("a", 1), 1);
  INIWorker::Batch batch(worker_);
  worker_.PutNum("a", 2);
  {
    const TavoFile held(path_, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting,
                        TavoFile::Share::kDenyWrite);
    EXPECT_EQ(batch.Commit(), 0);
  }
  EXPECT_EQ(INIWorker(path_).GetNum("S", "a"), 1);
  EXPECT_EQ(batch.Commit(), 1);
  EXPECT_EQ(INIWorker(path_).GetNum("S", "a"), 2);
}

TEST(INIExceptionTest, TakesTheLastErrorAlongAndKeepsItsTextToItself) {
  platform::SetLastErrorCode(32);
  const TavoINIException original("a.ini");
  platform::SetLastErrorCode(2);
  TavoINIException error("b.ini");
  EXPECT_EQ(error.errorCode, 2U);
  error = original;
  EXPECT_EQ(error.errorCode, 32U);
  EXPECT_EQ(error.message, "a.ini");
  EXPECT_EQ(error.GetMessage(), "No message for now");
}

// Whatever ends the process meanwhile, the file holds its old contents or its new ones.
TEST_F(INIWorkerTest, ABatchKeepsDeletedContentsUntilItIsStored) {
  EXPECT_EQ(INIWorker("").DeleteContents(), 0);
  EXPECT_EQ(INIWorker(folder_.Path("no\\a.cfg")).DeleteContents(), 0);
  EXPECT_EQ(worker_.DeleteContents(), 1);
  EXPECT_TRUE(std::filesystem::exists(folder_.Host() / "a.cfg"));
  ASSERT_EQ(worker_.PutNum("old", 1), 1);
  const std::string before = Bytes();
  {
    INIWorker::Batch batch(worker_);
    worker_.PutNum("dropped", 1);
    ASSERT_EQ(worker_.DeleteContents(), 1);
    worker_.PutNum("new", 2);
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(worker_.GetNum("S", "old"), 0);
  }
  EXPECT_EQ(Bytes(), "[S]\r\nnew=2\r\n");
  {
    INIWorker::Batch batch(worker_);
    ASSERT_EQ(worker_.DeleteContents(), 1);
    EXPECT_EQ(batch.Commit(), 1);
  }
  EXPECT_EQ(Bytes(), "");
}

}  // namespace
}  // namespace vemra
