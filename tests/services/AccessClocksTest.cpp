#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "Support/platform/Clock.h"
#include "Support/platform/ComputerName.h"
#include "tests/services/AccessHolder.h"

namespace vemra {
namespace {

using Status = TavoDBAccess::IndexingStatus;

constexpr std::int64_t kTerm = 20;
constexpr std::int64_t kStart = 1800000000;

struct Computer {
  const char* name;
  std::int64_t offset;  // of its clock, in seconds
};

// A program on a computer whose clock is its own.
struct Actor {
  Actor(const std::string& path, const Computer& home) : access(path), computer(home) {}

  test::AccessHolder access;
  Computer computer;
  bool isDead = false;
  bool isIndexer = false;   // of the access that it holds
  std::int64_t until = -1;  // true time, to the last second of that access
};

// A database that is shared by computers with clocks that disagree; true time is the test's.
class SharedDatabase {
 public:
  explicit SharedDatabase(const std::vector<Computer>& computers) {
    for (const Computer& computer : computers) {
      for (int i = 0; i < 4; ++i) {
        actors_.push_back(std::make_unique<Actor>(folder_.Path("db.acc"), computer));
      }
    }
  }

  std::vector<std::unique_ptr<Actor>>& Actors() { return actors_; }
  std::string Path() const { return folder_.Path("db.acc"); }
  void Pass(std::int64_t seconds) { now_ += seconds; }

  // Runs an operation at the present time on the actor's computer.
  template <typename Operation>
  void Act(Actor& actor, Operation operation) {
    const platform::SetClock clock(kStart + now_ + actor.computer.offset);
    const platform::SetComputerName name(actor.computer.name);
    operation();
  }

  void Search(Actor& actor) {
    Act(actor, [&] {
      if (actor.access->GetSearchAccess(TimeSpan(kTerm)) == 0) return;
      actor.until = now_ + kTerm;
      actor.isIndexer = false;
    });
  }
  void Index(Actor& actor) {
    Act(actor, [&] {
      if (actor.access->GetIndexingAccess(TimeSpan(kTerm)) == 0 ||
          actor.access->GetIndexingStatus() != Status::kIndexing) {
        return;
      }
      actor.until = now_ + kTerm;
      actor.isIndexer = true;
    });
  }
  void Release(Actor& actor) {
    Act(actor, [&] {
      actor.until = -1;
      actor.access->ReleaseSearchAccess();
      actor.access->ReleaseIndexingAccess();
    });
  }

  bool IsLive(const Actor& actor) const { return actor.until >= now_; }
  // Not in the second in which it ends, when its successor may come as well.
  bool IsLiveBeyond(const Actor& actor) const { return actor.until > now_; }

  void CheckLines() {
    const std::string text = test::ReadTextFile(folder_.Host() / "db.acc");
    int live = 0;
    bool isIndexed = false;
    for (const auto& actor : actors_) {
      if (IsLive(*actor)) {
        // What the last operation of this object left of its own line.
        char thread[16];
        std::snprintf(thread, sizeof thread, "%-8X ", actor->access.GetThreadId());
        const std::string name = actor->isIndexer ? kIndexingName : actor->computer.name;
        EXPECT_THAT(text, ::testing::HasSubstr(name + std::string(17 - name.size(), ' ') + thread))
            << "a live holder was dropped, " << actor->until - now_ << " seconds early";
      }
      live += IsLiveBeyond(*actor) ? 1 : 0;
      isIndexed = isIndexed || (IsLiveBeyond(*actor) && actor->isIndexer);
    }
    EXPECT_TRUE(!isIndexed || live == 1) << live << " beside an indexer";
  }

 private:
  const test::TempFolder folder_;
  std::vector<std::unique_ptr<Actor>> actors_;
  std::int64_t now_ = 0;
};

struct Row {
  const char* label;
  std::vector<Computer> computers;
};

const Row kRows[] = {
    {"one clock", {{"A", 0}, {"B", 0}, {"C", 0}}},
    {"a day ahead and a day behind", {{"A", 0}, {"B", 86400}, {"C", -86400}}},
    {"a second, and an hour", {{"A", 0}, {"B", 1}, {"C", -3600}}},
};

TEST(AccessClocksTest, NoLiveHolderIsDroppedEarlyAndEveryDeadOneInTheEnd) {
  for (const Row& row : kRows) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
      SCOPED_TRACE(row.label + std::string(", seed ") + std::to_string(seed));
      SharedDatabase database(row.computers);
      std::mt19937 random(seed);
      int searches = 0;
      int updates = 0;
      for (int step = 0; step < 1000 && !::testing::Test::HasFailure(); ++step) {
        database.Pass(random() % 4 == 0 ? static_cast<std::int64_t>(random() % 6) : 0);
        Actor& actor = *database.Actors()[random() % database.Actors().size()];
        // A dead one stays dead long enough to be dropped; then the same program starts again.
        if (actor.isDead) {
          actor.isDead = database.IsLive(actor) || random() % 4 != 0;
          continue;
        }
        switch (random() % 8) {
          case 0:
          case 1:
          case 2:
            database.Search(actor);
            break;
          case 3:
            database.Index(actor);
            break;
          case 4:
            actor.isDead = random() % 2 == 0;
            break;
          default:
            database.Release(actor);
        }
        searches += actor.until > 0 && !actor.isIndexer ? 1 : 0;
        updates += actor.until > 0 && actor.isIndexer ? 1 : 0;
        database.CheckLines();
      }
      EXPECT_GT(searches, 10);
      EXPECT_GT(updates, 2);
      // Whoever is left is dead now. A newcomer on any computer outlasts them in one term.
      Actor newcomer(database.Path(), row.computers[seed % row.computers.size()]);
      std::int64_t waited = 0;
      for (; !database.IsLive(newcomer) && waited <= 2 * kTerm; ++waited) {
        database.Index(newcomer);
        database.Pass(1);
      }
      EXPECT_LE(waited, kTerm + 2);
    }
  }
}

}  // namespace
}  // namespace vemra
