#include "programs/commands/AccessCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include "Support/services/DBAccess.h"
#include "programs/commands/IndexingAccess.h"
#include "programs/commands/LockedError.h"
#include "tests/programs/commands/RunVemra.h"

namespace vemra::commands {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// An indexed database whose name no other test has, since the stop event goes by that name.
class AccessCommandTest : public VemraTest {
 protected:
  void SetUp() override {
    name_ = folder_.Host().filename().string();
    AddDocuments(0, 3);
    CreateAndIndex();
  }

  void AddDocuments(int first, int end) const {
    for (int i = first; i < end; ++i) Write("docs/" + std::to_string(i) + ".txt", "cat");
  }
  std::string Access() const { return Read(name_ + ".acc"); }
  void SetAccess(const std::string& lines) const { Write(name_ + ".acc", lines); }
  // Holds the database in somebody else's name.
  void Hold(const std::string& name, std::uint32_t thread = 0x1A4, int seconds = 600) const {
    const DateTime now = DateTime::Now();
    SetAccess(Access() + FormatAccessLine({now, now, now + TimeSpan(seconds), thread, name}));
  }
  Outcome Answer(const std::string& answers, const std::string& holder = "") const {
    std::ostringstream out;
    std::ostringstream err;
    std::istringstream in(answers);
    Console console{out, err};
    const AccessOptions options{.definition = Definition(), .release = true, .holder = holder};
    const int exitCode = RunAccess(options, console, in);
    return {exitCode, out.str(), err.str()};
  }
};

TEST_F(AccessCommandTest, CommandsLeaveNoLineBehind) {
  EXPECT_EQ(Vemra({"search", "cat"}).exitCode, kDone);
  EXPECT_EQ(Vemra({"search", "dog"}).exitCode, kNothingFound);
  EXPECT_EQ(Vemra({"search", "(cat"}).exitCode, kUsage);
  EXPECT_EQ(Vemra({"show", "1"}).exitCode, kDone);
  EXPECT_EQ(Access(), "");
  EXPECT_EQ(Vemra({"access"}).out, name_ + ": free\n");
}

TEST_F(AccessCommandTest, ARefusalNamesTheHolder) {
  Hold("[Indexing]");
  for (const auto& [command, argument] : {std::pair("search", "cat"), {"show", "1"}}) {
    const Outcome run = Vemra({command, argument});
    EXPECT_EQ(run.exitCode, kLocked);
    EXPECT_THAT(run.err, HasSubstr("Indexing in progress; searches are not allowed."));
    EXPECT_THAT(run.err, HasSubstr("[Indexing] of thread 1A4, last renewed "));
  }
  const Outcome run = Vemra({"index", "--wait", "0"});
  EXPECT_EQ(run.exitCode, kLocked);
  EXPECT_THAT(run.err, HasSubstr("others hold the database\n  [Indexing] of thread 1A4"));
}

TEST_F(AccessCommandTest, AnIndexerWaitsForSearchesAndTakesItsRequestBack) {
  Hold("SERVER7");
  const Outcome run = Vemra({"index", "--wait", "1"});
  EXPECT_EQ(run.exitCode, kLocked);
  EXPECT_THAT(run.err, HasSubstr("waiting for up to 1 seconds\n  SERVER7:1A4, last renewed"));
  EXPECT_THAT(run.err, Not(HasSubstr("[IndexRequest]")));
  EXPECT_EQ(Vemra({"search", "cat"}).exitCode, kDone) << "no request is left";
}

// One term after the indexer has seen it first.
TEST_F(AccessCommandTest, AnIndexerOutlastsADeadOne) {
  Hold("[Indexing]", 0x1A4, 1);
  const Outcome run = Vemra({"index", "--wait", "10"});
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_THAT(run.err, HasSubstr("waiting for up to 10 seconds\n  [Indexing] of thread 1A4"));
  EXPECT_EQ(Access(), "");
}

TEST_F(AccessCommandTest, ShowsWhoHoldsTheDatabase) {
  Hold("SERVER7", 0x2F0);
  Hold("[IndexRequest]", 0x1A4, -1);
  const Outcome run = Vemra({"access"});
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_THAT(run.out, HasSubstr(name_ + ": requested\n  SERVER7:2F0, last renewed "));
  EXPECT_THAT(run.out, HasSubstr(", expired by this computer's clock\n"));
  Json access = Json::parse(Vemra({"access", "--json"}).out);
  EXPECT_EQ(access["status"], "requested");
  for (Json& holder : access["holders"]) {
    holder.erase("renewed");
    holder.erase("until");
  }
  EXPECT_EQ(access["holders"].dump(),
            R"([{"computer":"SERVER7","expired":false,"kind":"search","thread":752},)"
            R"({"computer":null,"expired":true,"kind":"request","thread":420}])");
}

TEST_F(AccessCommandTest, RemovesALineThatAPersonKnowsToBeDead) {
  Hold("[Indexing]");
  Hold("SERVER7");
  EXPECT_EQ(Vemra({"access", "--release", "--yes"}).exitCode, kUsage) << "which of them?";
  EXPECT_EQ(Vemra({"access", "--release", "--yes", "--holder", "X"}).exitCode, kNothingFound);
  EXPECT_EQ(Answer("n\n").exitCode, kNothingFound);
  EXPECT_EQ(Answer("").exitCode, kNothingFound);
  const Outcome run = Answer("n\ny\n");
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_EQ(run.out, "Removed SERVER7:1A4\n");
  EXPECT_EQ(Vemra({"search", "cat"}).exitCode, kLocked);
  EXPECT_EQ(Answer("y\n", "[Indexing]").out, "Removed [Indexing] of thread 1A4\n");
  EXPECT_EQ(Vemra({"search", "cat"}).exitCode, kDone);
}

TEST_F(AccessCommandTest, SaysWhatIsWrongWithTheAccessFile) {
  SetAccess("\n");
  for (const Arguments& arguments :
       {Arguments{"access"}, {"search", "cat"}, {"index"}, {"access", "--release"}}) {
    const Outcome run = Vemra(arguments);
    EXPECT_EQ(run.exitCode, kUsage);
    EXPECT_THAT(run.err, HasSubstr(File(name_ + ".acc") + ": Line 1 is invalid."));
  }
}

TEST_F(AccessCommandTest, AnIndexerThatLostItsAccessStops) {
  CTavoFileCFG configuration(folder_.Path(name_ + ".cfg"));
  std::ostringstream out;
  Console console{out, out};
  IndexingAccess access(configuration);
  ASSERT_TRUE(access.Take(std::chrono::seconds(0), console));
  EXPECT_NO_THROW(access.KeepFor(TimeSpan(600)));
  SetAccess("");  // others came and left while it was suspended
  EXPECT_THROW(access.KeepFor(TimeSpan(600)), LockedError);
}

// An indexing process that is suspended as soon as it has its access.
class RunningIndexer {
 public:
  RunningIndexer(const std::string& definition, const std::string& name)
      : process_(StartIndexing(definition)) {
    while (GetStopIndexingEvent(name.c_str(), 0) == nullptr) ::usleep(100);
    ::kill(process_, SIGSTOP);
  }
  // Lets it go on; returns its exit code.
  int Resume() const {
    ::kill(process_, SIGCONT);
    const int status = test::Wait(process_);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t process_;
};

// It finds the line of another in place of its own before its texts are stored.
TEST_F(AccessCommandTest, AnIndexerThatLostItsAccessStoresNothing) {
  AddDocuments(3, 1000);
  const RunningIndexer indexer(Definition(), name_);
  SetAccess("");
  Hold("[Indexing]");
  EXPECT_EQ(indexer.Resume(), kLocked);
  EXPECT_THAT(Access(), HasSubstr("[Indexing]       1A4"));
  ASSERT_EQ(Vemra({"access", "--release", "--yes"}).exitCode, kDone);
  EXPECT_THAT(Vemra({"search", "cat"}).out, HasSubstr("3 texts\n"));
  EXPECT_THAT(Read(name_ + ".cfg"), HasSubstr("Loadable=NO")) << "that is the other's to say";
}

TEST_F(AccessCommandTest, StopEndsTheIndexerAfterItsDocument) {
  EXPECT_EQ(Vemra({"stop"}).exitCode, kNothingFound);
  AddDocuments(3, 1000);
  const RunningIndexer indexer(Definition(), name_);
  EXPECT_THAT(Vemra({"access"}).out, HasSubstr(name_ + ": indexing\n"));
  EXPECT_EQ(Vemra({"stop"}).exitCode, kDone);
  EXPECT_EQ(indexer.Resume(), kNothingFound);
  EXPECT_EQ(Access(), "");
  EXPECT_EQ(Vemra({"stop"}).exitCode, kNothingFound);
}

}  // namespace
}  // namespace vemra::commands
