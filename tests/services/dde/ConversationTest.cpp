// Conversations within this process; DDEProcessTest has them between two programs.
#include <gtest/gtest.h>

#include "tests/TempFolder.h"
#include "tests/services/dde/FrameworkClient.h"
#include "tests/services/dde/LibraryServer.h"
#include "tests/services/dde/OtherProgram.h"

namespace vemra {
namespace {

class ConversationTest : public testing::TestWithParam<test::TestDdeManager::Kind> {
 protected:
  ConversationTest() : dde_(GetParam()) {
    EXPECT_EQ(server_.Create("Library"), 1);
    dde_.Settle();
  }
  ~ConversationTest() override {
    if (dde_.IsInProcess()) {  // under Wine a wild connect leaves some behind
      EXPECT_EQ(server_.GetConversations().GetCount(), 0);
    }
    server_.Shutdown();
    test::ExpectNothingLeft(dde_);
  }

  test::TestDdeManager dde_;
  test::LibraryServer server_;
};
INSTANTIATE_TEST_SUITE_P(Managers, ConversationTest, test::EveryDdeManager());

TEST_P(ConversationTest, AnotherProgramGetsAllThatTheServerOffers) {
  const std::string script = test::ReadHostFile(VEMRA_TEST_DATA "/dde/conversation.txt");
  test::OtherProgram client(dde_);
  EXPECT_EQ(test::RunScript(script, client), script);
}

TEST_P(ConversationTest, TheServerTalksToItself) {
  const std::string script = test::ReadHostFile(VEMRA_TEST_DATA "/dde/client.txt");
  test::FrameworkClient client(dde_);
  EXPECT_EQ(test::RunScript(script, client), script);
}

}  // namespace
}  // namespace vemra
