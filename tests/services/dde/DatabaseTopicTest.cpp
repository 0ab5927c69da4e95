#include "examples/DatabaseTopic.h"

#include <gmock/gmock.h>
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
  for (const char* const command :
       {"a connect Library Books", "b connect Library Books", "b watch Status TEXT",
        "b watch Texts TEXT", "b watch LastUpdate TEXT"}) {
    ASSERT_EQ(client.Run(command), "done") << command;
  }
  EXPECT_EQ(client.Run("a request Status TEXT"), "[new]");
  const auto refresh = [&] {
    EXPECT_EQ(client.Run("a execute [refresh]"), "done");
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
  EXPECT_EQ(client.Run("a execute [drop]"), "refused");
  if (dde.IsInProcess()) {  // under Wine a refused poke looks done
    EXPECT_EQ(client.Run("a poke Status TEXT ready"), "refused");
  }
  EXPECT_THAT(client.Run("a request Formats TEXT"), testing::StartsWith("[TEXT"));
}

}  // namespace
}  // namespace vemra
