#include "examples/DatabaseTopic.h"

#include <gtest/gtest.h>

#include "Support/platform/Clock.h"
#include "tests/TempFolder.h"
#include "tests/services/dde/LibraryServer.h"
#include "tests/services/dde/OtherProgram.h"

namespace vemra {
namespace {

class DatabaseTopicTest : public testing::TestWithParam<test::TestDdeManager::Kind> {};
INSTANTIATE_TEST_SUITE_P(Managers, DatabaseTopicTest, test::EveryDdeManager());

// The life of a database, as another program sees it that watches its state.
TEST_P(DatabaseTopicTest, TellsOfEachChange) {
  const test::TestDdeManager dde(GetParam());
  const platform::SetClock clock(DateTime::FromLocal({2009, 3, 7, 9, 5, 3}).GetSeconds());
  const test::TempFolder folder;
  test::WriteHostFile(folder.Host() / "a.cfg", "[General Definitions]\nIndexName=books\n");
  CTavoFileCFG database(folder.Path("a.cfg"));
  test::RecordingServer server;
  ASSERT_EQ(server.AddTopic(std::make_unique<dde_state::DatabaseTopic>(folder.Path("no.cfg"))), 0);
  ASSERT_EQ(server.AddTopic(std::make_unique<dde_state::DatabaseTopic>(folder.Path("a.cfg"))), 1);
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde);
  ASSERT_TRUE(client.Connect('a', "Library", "Books"));
  ASSERT_TRUE(client.Connect('b', "Library", "Books"));
  for (const char* const item : {"Status", "Texts", "LastUpdate"}) {
    ASSERT_TRUE(client.Watch('b', item, "TEXT"));
  }
  EXPECT_EQ(client.Request('a', "Status", "TEXT").value_or("").substr(0, 4),
            std::string("new\0", 4));
  const auto refresh = [&] {
    EXPECT_TRUE(client.Execute('a', "[refresh]"));
    return client.TakeChanges('b');
  };
  EXPECT_EQ(refresh(), "");
  test::WriteHostFile(folder.Host() / "books.fin", std::string(3 * 263, '\0'));
  database.MarkUpdateFinished(true);
  EXPECT_EQ(refresh(), "Status ready;Texts 3;LastUpdate 03/07/2009  09:05;");
  database.MarkUpdateStarted();
  EXPECT_EQ(refresh(), "Status updating;");
  database.MarkUpdateFinished(false);
  EXPECT_EQ(refresh(), "Status failed;");
  std::filesystem::remove(folder.Host() / "a.cfg");
  EXPECT_EQ(refresh(), "Status missing;");
  EXPECT_FALSE(client.Execute('a', "[drop]"));
  if (dde.IsInProcess()) {  // under Wine a refused poke looks done
    EXPECT_FALSE(client.Poke('a', "Status", "TEXT", "ready"));
  }
  EXPECT_EQ(client.Request('a', "Formats", "TEXT").value_or("").substr(0, 4), "TEXT");
}

}  // namespace
}  // namespace vemra
