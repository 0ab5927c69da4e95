// Searchers and indexers of one database in processes of their own, which are killed at random,
// with a checker that shares nothing with them but the rules.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "Support/platform/Clock.h"
#include "Support/services/DBAccess.h"
#include "tests/TempFolder.h"
#include "tests/posix/Processes.h"

namespace vemra::test {
namespace {

constexpr int kProcesses = 16;
constexpr int kMaxSlots = 8192;
constexpr int kMinKills = 5;
constexpr std::int64_t kTerm = 1;  // seconds

enum Use { kNothing, kSearching, kIndexing };

// What a process believes to hold. That of a killed one counts until it expires.
struct Slot {
  std::atomic<int> use;
  std::atomic<std::int64_t> until;
};

// In memory that all processes share.
struct Board {
  std::atomic<std::int64_t> time;  // of the set clock
  std::atomic<int> cycles;
  std::atomic<int> searches;
  std::atomic<int> updates;
  std::atomic<int> kills;
  std::atomic<int> slotCount;
  std::atomic<bool> hasFault;
  char fault[200];
  std::array<Slot, kMaxSlots> slots;

  void Report(const char* what, std::int64_t a = 0, std::int64_t b = 0) {
    if (hasFault.exchange(true)) return;
    std::snprintf(fault, sizeof fault, "%s (%lld, %lld)", what, static_cast<long long>(a),
                  static_cast<long long>(b));
  }
};

struct Campaign {
  Board* board;
  std::string path;
  std::string turnPath;  // the host path of the file on which turns are taken
  bool hasRealClock;
  int cycles;

  std::int64_t Now() const { return hasRealClock ? std::time(nullptr) : board->time.load(); }
  bool IsOver() const {
    return (board->cycles >= cycles && board->kills >= kMinKills) || board->hasFault;
  }
};

// Under the set clock one process acts at a time, since nobody really waits then; the turn ends
// with the process. Every turn is a moment later, or in the same second. Under the real clock they
// meet.
class Turn {
 public:
  Turn(const Campaign& campaign, unsigned seconds) {
    if (campaign.hasRealClock) return;
    file_ = ::open(campaign.turnPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    ::fcntl(file_, F_OFD_SETLKW, &lock);
    clock_.emplace(campaign.board->time += seconds);
  }
  ~Turn() {
    if (file_ >= 0) ::close(file_);
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  int file_ = -1;
  std::optional<platform::SetClock> clock_;
};

class Actor {
 public:
  Actor(const Campaign& campaign, unsigned seed)
      : campaign_(campaign),
        board_(*campaign.board),
        slot_(board_.slots[static_cast<std::size_t>(board_.slotCount++)]),
        random_(seed),
        access_(campaign.path) {}

  void Run() {
    if (&slot_ == &board_.slots[0]) Index();  // even in a short campaign somebody does
    while (!campaign_.IsOver()) {
      if (!hasIndexed_ && random_() % 40 == 0) {
        Index();
      } else {
        Search();
      }
    }
  }

 private:
  template <typename Operation>
  int Cycle(Operation operation) {
    // Slowly under the real clock: who asks many times a second writes back the lines of those who
    // have just left, and in a crowd that does nothing else nobody is admitted.
    ::usleep(random_() % (campaign_.hasRealClock ? 400000 : 3000));
    const Turn turn(campaign_, random_() % 8 == 0 ? 1 : 0);
    const int result = operation();
    ++board_.cycles;
    const std::string& error = access_.GetErrorText();
    if (result == 0 && error.find("allowed") == error.npos && error.find("another") == error.npos &&
        !error.empty()) {
      board_.Report(error.c_str());
    }
    return result;
  }

  void Search() {
    if (Cycle([&] { return access_.GetSearchAccess(TimeSpan(kTerm)); }) == 0) return;
    Publish(kSearching);
    ++board_.searches;
    if (random_() % 2 == 0) Cycle([&] { return access_.GetSearchAccess(TimeSpan(kTerm)); });
    slot_.use = kNothing;
    Cycle([&] { return access_.ReleaseSearchAccess(); });
  }

  // Once in its life: a thread that asks again soon after its release may find its own line, which
  // somebody who watched it has written back, and take it for a grant (see docs/access.md).
  void Index() {
    hasIndexed_ = true;
    const auto ask = [&] { return access_.GetIndexingAccess(TimeSpan(kTerm)); };
    for (int i = 0; i < 100 && !campaign_.IsOver(); ++i) {
      if (Cycle(ask) != 0 && access_.GetIndexingStatus() == TavoDBAccess::kIndexing) {
        Publish(kIndexing);
        ++board_.updates;
        for (unsigned renewals = random_() % 4; renewals > 0; --renewals) {
          const bool isOurs = Cycle(ask) != 0 && access_.WasRenewed() &&
                              access_.GetIndexingStatus() == TavoDBAccess::kIndexing;
          if (!isOurs) break;
          Publish(kIndexing);
        }
        break;
      }
    }
    slot_.use = kNothing;
    Cycle([&] { return access_.ReleaseIndexingAccess() != 0 || true; });
  }

  // First it tells what it holds, then looks at the others; of two at fault one sees the other.
  void Publish(Use use) {
    slot_.until = access_.GetLastUpdateTime().GetSeconds() + kTerm;
    slot_.use = use;
    for (Slot& other : board_.slots) {
      if (&other == &slot_ || other.use == kNothing) continue;
      if (use != kIndexing && other.use != kIndexing) continue;
      const std::int64_t until = other.until;
      const std::int64_t now = campaign_.Now();
      if (until > now && slot_.until > now && other.use != kNothing &&
          slot_.until > campaign_.Now())
        board_.Report("an indexer is not alone", slot_.until - now, until - now);
    }
  }

  const Campaign& campaign_;
  Board& board_;
  Slot& slot_;
  std::mt19937 random_;
  bool hasIndexed_ = false;
  TavoDBAccess access_;
};

// The whole text, once nobody is writing it.
std::string ReadWhenFree(const std::string& path) {
  for (;;) {
    try {
      TavoFile file(path, TavoFile::Access::kRead, TavoFile::Creation::kOpenOrCreate,
                    TavoFile::Share::kDenyWrite);
      std::string text(static_cast<std::size_t>(file.GetLength()), '\0');
      text.resize(file.Read(text.data(), text.size()));
      return text;
    } catch (const std::system_error&) {
      ::usleep(200);
    }
  }
}

// Checks the access file as another program reads it.
void CheckFile(const Campaign& campaign) {
  const Turn turn(campaign, 0);
  std::istringstream text(ReadWhenFree(campaign.path));
  const std::int64_t now = campaign.Now();
  int live = 0;
  bool isIndexed = false;
  for (std::string line; std::getline(text, line);) {
    if (text.eof() || line.size() > 98) return campaign.board->Report("a line without end");
    char name[17];
    std::tm end{};
    const int fields = std::sscanf(
        line.c_str(), "%16s %*X %*d:%*d:%*d %*d/%*d/%*d expires %d:%d:%d %d/%d/%d", name,
        &end.tm_hour, &end.tm_min, &end.tm_sec, &end.tm_mday, &end.tm_mon, &end.tm_year);
    if (fields != 7) return campaign.board->Report("a line that cannot be read");
    end.tm_mon -= 1;
    end.tm_year -= 1900;
    end.tm_isdst = -1;
    if (std::mktime(&end) <= now) continue;
    ++live;
    isIndexed = isIndexed || name == std::string("[Indexing]");
  }
  if (isIndexed && live > 1) campaign.board->Report("an indexer's line is not alone", live);
}

pid_t StartActor(const Campaign& campaign, unsigned seed) {
  return Start([&] {
    Actor(campaign, seed).Run();
    // As its last, so that the process's static objects are left alone.
    ::_exit(0);
  });
}

// Kills processes at random, and starts new ones, until all cycles are done.
void RunProcesses(const Campaign& campaign, unsigned pauseMicroseconds) {
  std::mt19937 random(5);
  std::vector<pid_t> actors;
  unsigned seed = 1000;
  for (int i = 0; i < kProcesses; ++i) actors.push_back(StartActor(campaign, ++seed));
  while (!campaign.IsOver() && campaign.board->slotCount < kMaxSlots - 1) {
    ::usleep(random() % (2 * pauseMicroseconds));
    pid_t& actor = actors[random() % actors.size()];
    ::kill(actor, SIGKILL);
    Wait(actor);
    ++campaign.board->kills;
    CheckFile(campaign);
    actor = StartActor(campaign, ++seed);
  }
  for (const pid_t actor : actors) {
    EXPECT_EQ(Wait(actor), 0);
  }
  CheckFile(campaign);
}

void RunCampaign(bool hasRealClock, unsigned pauseMicroseconds) {
  const TempFolder folder;
  void* const memory =
      ::mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(memory, MAP_FAILED);
  auto* const board = new (memory) Board{};
  board->time = 1800000000;
  const Campaign campaign{board, folder.Path("db.acc"), (folder.Host() / "turn").string(),
                          hasRealClock, Count("VEMRA_SOAK_CYCLES", hasRealClock ? 200 : 600)};
  RunProcesses(campaign, pauseMicroseconds);
  EXPECT_FALSE(board->hasFault) << board->fault;
  EXPECT_GT(board->searches + board->updates, 0);
  // Of those that were killed last, nobody stays.
  TavoDBAccess last(campaign.path);
  int result = 0;
  for (std::int64_t waited = 0; result == 0 && waited <= 2 * kTerm + 2; ++waited) {
    const Turn turn(campaign, 1);
    if (hasRealClock) ::sleep(1);
    const int granted = last.GetIndexingAccess(TimeSpan(kTerm));
    result = granted != 0 && last.GetIndexingStatus() == TavoDBAccess::kIndexing ? 1 : 0;
  }
  EXPECT_EQ(result, 1) << last.GetErrorText();
  std::printf("%d cycles, %d searches, %d updates, %d kills\n", board->cycles.load(),
              board->searches.load(), board->updates.load(), board->kills.load());
  ::munmap(memory, sizeof(Board));
}

TEST(AccessCampaignTest, ProcessesKilledAtRandomUnderTheRealClock) {
  RunCampaign(/*hasRealClock=*/true, /*pauseMicroseconds=*/300000);
}

TEST(AccessCampaignTest, ProcessesKilledAtRandomUnderASetClock) {
  RunCampaign(/*hasRealClock=*/false, /*pauseMicroseconds=*/300);
}

// A file of many pages, rewritten without end by a process that is killed.
TEST(AccessCampaignTest, AKilledProcessLeavesEverybodysLine) {
  const int rounds = Count("VEMRA_SOAK_KILLS", 60);
  const TempFolder folder;
  const std::string path = folder.Path("db.acc");
  std::mt19937 random(3);
  for (const int holders : {3, 300}) {
    std::string text;
    const DateTime now = DateTime::Now();
    for (int i = 0; i < holders; ++i) {
      text +=
          FormatAccessLine({now, now, now + TimeSpan(100000), 0xF0000000 + unsigned(i), "THERE"});
    }
    WriteHostFile(folder.Host() / "db.acc", text);
    int killed = 0;
    for (int round = 0; round < rounds; ++round) {
      const pid_t writer = Start([&] {
        TavoDBAccess access(path);
        for (;;) {
          access.GetSearchAccess(TimeSpan(0));  // its line comes and goes
          access.ReleaseSearchAccess();
        }
      });
      ::usleep(random() % 8000);
      ::kill(writer, SIGKILL);
      killed += WIFSIGNALED(Wait(writer)) ? 1 : 0;
      TavoDBAccess access(path);
      ASSERT_EQ(access.ReleaseSearchAccess(), 1) << access.GetErrorText() << ", round " << round;
      const std::vector<AccessEntry> found = access.GetHolders();
      ASSERT_EQ(std::count_if(found.begin(), found.end(),
                              [](const AccessEntry& holder) { return holder.name == "THERE"; }),
                holders)
          << "round " << round;
    }
    EXPECT_EQ(killed, rounds);
  }
}

}  // namespace
}  // namespace vemra::test
