#include "Support/services/DBAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <system_error>

#include "Support/platform/Clock.h"
#include "Support/platform/ComputerName.h"
#include "tests/services/AccessHolder.h"

namespace vemra {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using Status = TavoDBAccess::IndexingStatus;

constexpr TimeSpan kTerm(30);

// Everybody is on the computer HERE, at a set time, unless a test says otherwise.
class DBAccessTest : public ::testing::Test {
 protected:
  std::filesystem::path HostPath() const { return folder_.Host() / "db.acc"; }
  std::string Path() const { return folder_.Path("db.acc"); }
  void Put(const std::string& text) const { test::WriteHostFile(HostPath(), text); }
  std::string Text() const { return test::ReadTextFile(HostPath()); }
  std::vector<std::string> Names() const { return test::ReadAccessNames(HostPath()); }
  static void Pass(int seconds) {
    platform::SetClock::Advance(static_cast<std::uint32_t>(seconds) * 1000);
  }
  // A line of somebody who has renewed it now.
  static std::string Line(const std::string& name, std::uint32_t threadId, TimeSpan term = kTerm) {
    const DateTime now = DateTime::Now();
    return FormatAccessLine({now, now, now + term, threadId, name});
  }

  const platform::SetClock clock_{1800000000};
  const platform::SetComputerName computer_{"HERE"};
  const test::TempFolder folder_;
};

TEST_F(DBAccessTest, AnEmptyOrMissingFileAdmitsTheFirst) {
  test::AccessHolder searcher(Path());
  EXPECT_EQ(searcher->GetSearchAccess(kTerm), 1) << searcher->GetErrorText();
  EXPECT_EQ(searcher->GetLastUpdateTime(), DateTime(1800000000));
  EXPECT_EQ(searcher->GetIndexingStatus(), Status::kFree);
  EXPECT_THAT(Names(), ElementsAre("HERE"));
  Put("");
  test::AccessHolder indexer(Path());
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_EQ(indexer->GetIndexingStatus(), Status::kIndexing);
  EXPECT_THAT(Names(), ElementsAre("[Indexing]"));
}

TEST_F(DBAccessTest, ARequestWaitsForTheSearchersAndKeepsNewOnesOut) {
  test::AccessHolder searcher(Path());
  test::AccessHolder indexer(Path());
  test::AccessHolder late(Path());
  ASSERT_EQ(searcher->GetSearchAccess(kTerm), 1);
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_EQ(indexer->GetIndexingStatus(), Status::kRequested);
  EXPECT_THAT(Names(), ElementsAre("HERE", "[IndexRequest]"));
  EXPECT_EQ(late->GetSearchAccess(kTerm), 0);
  EXPECT_EQ(late->GetErrorText(), "Index requested; searches are not allowed.");
  EXPECT_EQ(late->GetIndexingAccess(kTerm), 0);
  EXPECT_EQ(late->GetErrorText(), "Index requested by another application.");
  EXPECT_EQ(late->ReleaseIndexingAccess(), 0);
  EXPECT_EQ(late->GetErrorText(), "This thread does not have indexing access.");
  EXPECT_EQ(searcher->GetSearchAccess(kTerm), 0) << "the registered one is not renewed either";
  Pass(1);
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_EQ(indexer->GetIndexingStatus(), Status::kRequested);
  EXPECT_TRUE(indexer->WasRenewed());
  EXPECT_EQ(searcher->ReleaseSearchAccess(), 1);
  Pass(1);
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_EQ(indexer->GetIndexingStatus(), Status::kIndexing);
  EXPECT_EQ(Text(), Line("[Indexing]", indexer->GetHolders().at(0).threadId));
  EXPECT_EQ(late->GetSearchAccess(kTerm), 0);
  EXPECT_EQ(late->GetErrorText(), "Indexing in progress; searches are not allowed.");
  EXPECT_EQ(late->GetIndexingAccess(kTerm), 0);
  EXPECT_EQ(late->GetErrorText(), "The database is being indexed by another application.");
  EXPECT_EQ(indexer->ReleaseIndexingAccess(), 1);
  EXPECT_EQ(Text(), "");
  Pass(1);
  EXPECT_EQ(late->GetSearchAccess(kTerm), 1);
  EXPECT_EQ(late->GetErrorText(), "The database is being indexed by another application.")
      << "the text keeps the last failure";
}

TEST_F(DBAccessTest, ASearcherHasOneLineWhoseExpiryOnlyGrows) {
  test::AccessHolder searcher(Path());
  ASSERT_EQ(searcher->GetSearchAccess(kTerm), 1);
  const DateTime until = DateTime::Now() + kTerm;
  Pass(10);
  EXPECT_EQ(searcher->GetSearchAccess(TimeSpan(5)), 1);
  const auto holders = searcher->GetHolders();
  ASSERT_EQ(holders.size(), 1U);
  EXPECT_EQ(holders[0].expires, until);
  EXPECT_EQ(holders[0].lastUpdate, DateTime::Now());
  EXPECT_EQ(Text(), FormatAccessLine(holders[0]));
  EXPECT_EQ(searcher->ReleaseSearchAccess(), 1);
  EXPECT_EQ(searcher->ReleaseSearchAccess(), 1) << "also when there is no line";
  EXPECT_EQ(searcher->ReleaseIndexingAccess(), 1) << "nothing to do";
  EXPECT_EQ(Text(), "");
}

// The last second counts; the next one does not.
TEST_F(DBAccessTest, ADeadSearcherOfThisComputerExpiresByTheClock) {
  Put(Line("HERE", 7));
  test::AccessHolder indexer(Path());
  Pass(30);
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_EQ(indexer->GetIndexingStatus(), Status::kRequested);
  Pass(1);
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_EQ(indexer->GetIndexingStatus(), Status::kIndexing);
}

// Of another computer, and of an indexer, only as seen by one who keeps watching.
TEST_F(DBAccessTest, ADeadHolderAgesInTheEyesOfAWatcherOnly) {
  for (const char* name : {"THERE", "here", "[Indexing]", "[IndexRequest]"}) {
    SCOPED_TRACE(name);
    Put(Line(name, 7));
    Pass(100000);  // far beyond its expiry
    for (int asked = 0; asked < 3; ++asked) {
      test::AccessHolder fresh(Path());
      fresh->GetIndexingAccess(kTerm);
      EXPECT_THAT(fresh->GetHolders(), Contains(Field(&AccessEntry::threadId, 7U)));
      if (name[0] != '[') {
        EXPECT_EQ(fresh->ReleaseIndexingAccess(), 1);
      }
      Pass(31);
    }
    test::AccessHolder watcher(Path());
    int seconds = 0;
    for (; watcher->GetIndexingAccess(kTerm) == 0 ||
           watcher->GetIndexingStatus() != Status::kIndexing;
         ++seconds) {
      ASSERT_LE(seconds, 31);
      Pass(1);
    }
    EXPECT_EQ(seconds, 31) << "one term after it was first seen";
    EXPECT_THAT(Names(), ElementsAre("[Indexing]"));
    EXPECT_EQ(watcher->ReleaseIndexingAccess(), 1);
  }
}

TEST_F(DBAccessTest, AnIndexerThatExpiredUnseenIsNewAgain) {
  test::AccessHolder indexer(Path());
  ASSERT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  Pass(31);
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_FALSE(indexer->WasRenewed()) << "it had expired";
  Put("");  // in the second in which the line lingers
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_FALSE(indexer->WasRenewed()) << "somebody had taken its line away";
  Pass(1);
  EXPECT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_TRUE(indexer->WasRenewed());
}

TEST_F(DBAccessTest, ALineOfAnotherThreadIsAnotherHolderWhoseClockStartsAnew) {
  test::AccessHolder watcher(Path());
  Put(Line("[Indexing]", 7));
  EXPECT_EQ(watcher->GetIndexingAccess(kTerm), 0);
  Pass(29);
  Put(Line("[Indexing]", 8, TimeSpan(5)));
  EXPECT_EQ(watcher->GetIndexingAccess(kTerm), 0);
  EXPECT_EQ(watcher->GetHolders().at(0).threadId, 8U);
  EXPECT_EQ(watcher->GetHolders().at(0).clockTime, DateTime::Now());
  EXPECT_EQ(watcher->GetHolders().at(0).expires, DateTime::Now() + TimeSpan(5));
  Pass(6);
  EXPECT_EQ(watcher->GetIndexingAccess(kTerm), 1);
}

TEST_F(DBAccessTest, AReleasedLineLingersThroughItsSecond) {
  test::AccessHolder indexer(Path());
  test::AccessHolder watcher(Path());
  ASSERT_EQ(indexer->GetIndexingAccess(kTerm), 1);
  EXPECT_EQ(watcher->GetSearchAccess(kTerm), 0);
  ASSERT_EQ(indexer->ReleaseIndexingAccess(), 1);
  EXPECT_EQ(watcher->GetSearchAccess(kTerm), 0);
  EXPECT_THAT(Names(), ElementsAre("[Indexing]"));
  Pass(1);
  EXPECT_EQ(watcher->GetSearchAccess(kTerm), 1);
}

// Also when it is refused for its own part.
TEST_F(DBAccessTest, WhoeverComesDropsWhatIsOver) {
  Put(Line("[IndexRequest]", 7, TimeSpan(100)) + Line("[Indexing]", 8, TimeSpan(100)) +
      Line("THERE", 9, TimeSpan(100)) + Line("HERE", 10));
  Pass(31);
  test::AccessHolder searcher(Path());
  EXPECT_EQ(searcher->GetSearchAccess(kTerm), 0);
  EXPECT_EQ(searcher->GetIndexingStatus(), Status::kIndexing);
  EXPECT_THAT(Names(), ElementsAre("THERE", "[Indexing]")) << "a grant supersedes a request";
}

// What makes a file one that cannot be read is told by the fuzz target of access files.
TEST_F(DBAccessTest, AFileThatCannotBeReadStaysAsItIs) {
  const std::string comment = ";" + std::string(98, 'x');  // it goes on in what follows
  const struct {
    std::string text;
    std::string error;
  } kRows[] = {{comment + Line("THERE", 1) + "; no line end", ""},
               {comment + "bad\n", "Line 2 is invalid."},
               {Line("THERE", 1) + std::string(99, ' ') + "\n", "Line 2 is too long."}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    Put(row.text);
    test::AccessHolder searcher(Path());
    EXPECT_EQ(searcher->GetSearchAccess(kTerm), row.error.empty() ? 1 : 0);
    EXPECT_EQ(searcher->GetErrorText(), row.error);
    if (row.error.empty()) {
      EXPECT_THAT(Names(), ElementsAre("HERE", "THERE")) << "comments are dropped";
    } else {
      EXPECT_EQ(Text(), row.text);
      Put("");
      EXPECT_EQ(searcher->GetSearchAccess(kTerm), 1) << "it goes on when the file is mended";
    }
  }
}

TEST_F(DBAccessTest, WaitsFiveTimesForALockedFile) {
  const TavoFile other(Path(), TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenOrCreate,
                       TavoFile::Share::kDenyWrite);
  test::AccessHolder searcher(Path());
  EXPECT_EQ(searcher->GetSearchAccess(kTerm), 0);
  EXPECT_EQ(platform::SetClock::GetElapsedMilliseconds(), 5000U);
  EXPECT_EQ(searcher->GetErrorText(), "") << "unchanged";
  EXPECT_EQ(searcher->GetLastUpdateTime(), DateTime()) << "nothing was read";
}

TEST_F(DBAccessTest, SaysWhyTheFileCannotBeOpened) {
  TavoDBAccess access(folder_.Path("no\\db.acc"));
  EXPECT_EQ(access.ReleaseSearchAccess(), 0);
  EXPECT_THAT(access.GetErrorText(), HasSubstr(folder_.Path("no\\db.acc") + ": "));
  EXPECT_EQ(access.GetErrorText().back(), '.');
  EXPECT_EQ(platform::SetClock::GetElapsedMilliseconds(), 0U) << "it does not wait for that";
}

TEST(DBAccessNameTest, WithoutAComputerNameThereIsNoSearch) {
  const platform::SetComputerName unknown("");
  const test::TempFolder folder;
  test::WriteHostFile(folder.Host() / "db.acc", "");
  TavoDBAccess access(folder.Path("db.acc"));
  EXPECT_EQ(access.GetSearchAccess(kTerm), 0);
  EXPECT_EQ(access.GetErrorText(), "GetComputerName() failed.");
  EXPECT_EQ(access.ReleaseSearchAccess(), 0);
  EXPECT_EQ(access.GetIndexingAccess(kTerm), 1) << "an indexer's line has no name";
}

TEST(DBAccessNameTest, KeysJoinNameAndThread) {
  EXPECT_EQ(TavoDBAccess::MakeKey("SERVER7", 0x1A4), "SERVER7:1A4");
  EXPECT_EQ(TavoDBAccess::MakeKey("", 0), ":0");
}

}  // namespace
}  // namespace vemra
