#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "Support/platform/Clock.h"
#include "Support/platform/ComputerName.h"
#include "tests/services/AccessHolder.h"

namespace vemra {
namespace {

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
    for (std::size_t i = 0; i < 4 * computers.size(); ++i) {
      actors_.push_back(Newcomer(computers[i % computers.size()]));
    }
  }

  std::unique_ptr<Actor> Newcomer(const Computer& computer) const {
    return std::make_unique<Actor>(folder_.Path("db.acc"), computer);
  }
  Actor& AnyActor(std::mt19937& random) { return *actors_[random() % actors_.size()]; }
  void Pass(std::int64_t seconds) { now_ += seconds; }
  bool IsLive(const Actor& actor) const { return actor.until >= now_; }

  void Search(Actor& actor) const {
    const Present present(*this, actor);
    if (actor.access->GetSearchAccess(TimeSpan(kTerm)) != 0) Hold(actor, /*isIndexer=*/false);
  }
  void Index(Actor& actor) const {
    const Present present(*this, actor);
    if (actor.access->GetIndexingAccess(TimeSpan(kTerm)) != 0 &&
        actor.access->GetIndexingStatus() == TavoDBAccess::kIndexing) {
      Hold(actor, /*isIndexer=*/true);
    }
  }
  void Release(Actor& actor) const {
    const Present present(*this, actor);
    actor.until = -1;
    actor.access->ReleaseSearchAccess();
    actor.access->ReleaseIndexingAccess();
  }

  void CheckLines() const {
    const std::string text = test::ReadTextFile(folder_.Host() / "db.acc");
    int live = 0;
    bool isIndexed = false;
    for (const auto& actor : actors_) {
      if (!IsLive(*actor)) continue;
      char line[40];
      std::snprintf(line, sizeof line, "%-16s %-8X ",
                    actor->isIndexer ? kIndexingName : actor->computer.name,
                    actor->access.GetThreadId());
      EXPECT_THAT(text, ::testing::HasSubstr(line))
          << "a live holder was dropped, " << actor->until - now_ << " seconds early";
      // In the second in which it ends its successor may come as well.
      if (actor->until == now_) continue;
      ++live;
      isIndexed = isIndexed || actor->isIndexer;
    }
    EXPECT_TRUE(!isIndexed || live == 1) << live << " beside an indexer";
  }

 private:
  // The present time, on the actor's computer.
  struct Present {
    Present(const SharedDatabase& database, const Actor& actor)
        : clock(kStart + database.now_ + actor.computer.offset), name(actor.computer.name) {}
    platform::SetClock clock;
    platform::SetComputerName name;
  };

  void Hold(Actor& actor, bool isIndexer) const {
    actor.until = now_ + kTerm;
    actor.isIndexer = isIndexer;
  }

  const test::TempFolder folder_;
  std::vector<std::unique_ptr<Actor>> actors_;
  std::int64_t now_ = 0;
};

TEST(AccessClocksTest, NoLiveHolderIsDroppedEarlyAndEveryDeadOneInTheEnd) {
  const struct {
    const char* label;
    std::vector<Computer> computers;
  } kRows[] = {
      {"one clock", {{"A", 0}, {"B", 0}, {"C", 0}}},
      {"a day ahead and a day behind", {{"A", 0}, {"B", 86400}, {"C", -86400}}},
      {"a second, and an hour", {{"A", 0}, {"B", 1}, {"C", -3600}}},
  };
  for (const auto& row : kRows) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
      SCOPED_TRACE(row.label + std::string(", seed ") + std::to_string(seed));
      SharedDatabase database(row.computers);
      std::mt19937 random(seed);
      int searches = 0;
      int updates = 0;
      for (int step = 0; step < 1000 && !::testing::Test::HasFailure(); ++step) {
        database.Pass(random() % 4 == 0 ? static_cast<std::int64_t>(random() % 6) : 0);
        Actor& actor = database.AnyActor(random);
        // A dead one stays dead long enough to be dropped; then the same program starts again.
        if (actor.isDead) {
          actor.isDead = database.IsLive(actor) || random() % 4 != 0;
          continue;
        }
        const unsigned choice = random() % 8;
        if (choice < 3) {
          database.Search(actor);
        } else if (choice == 3) {
          database.Index(actor);
        } else if (choice == 4) {
          actor.isDead = random() % 2 == 0;
        } else {
          database.Release(actor);
        }
        searches += actor.until > 0 && !actor.isIndexer ? 1 : 0;
        updates += actor.until > 0 && actor.isIndexer ? 1 : 0;
        database.CheckLines();
      }
      EXPECT_GT(searches, 10);
      EXPECT_GT(updates, 2);
      // Whoever is left is dead now. A newcomer on any computer outlasts them in one term.
      const auto newcomer = database.Newcomer(row.computers[seed % row.computers.size()]);
      std::int64_t waited = 0;
      for (; !database.IsLive(*newcomer) && waited <= 2 * kTerm; ++waited) {
        database.Index(*newcomer);
        database.Pass(1);
      }
      EXPECT_LE(waited, kTerm + 2);
    }
  }
}

}  // namespace
}  // namespace vemra
