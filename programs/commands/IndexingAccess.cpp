#include "programs/commands/IndexingAccess.h"

#include <ostream>
#include <thread>

#include "programs/commands/AccessText.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/LockedError.h"

namespace vemra::commands {
namespace {

// For so long a dead indexer keeps others waiting, and a live one may be busy with one document.
constexpr TimeSpan kTerm(300);
constexpr TimeSpan kRenewal(60);
constexpr TimeSpan kRetry(5);
constexpr char kHint[] = "vemra access DB.cfg --release removes the line of a holder that is dead";

}  // namespace

IndexingAccess::IndexingAccess(const CTavoFileCFG& configuration)
    : configuration_(configuration), access_(configuration.GetAccessFile()) {}

IndexingAccess::~IndexingAccess() {
  // First the event: what is asked of this indexer must not reach the next one.
  event_.reset();
  if (hasLine_) access_.ReleaseIndexingAccess();
}

bool IndexingAccess::Take(std::chrono::seconds wait, Console& console) {
  const auto deadline = std::chrono::steady_clock::now() + wait;
  for (bool isFirst = true; !IsStopRequested(); isFirst = false) {
    if (Ask(kTerm) == Answer::kGranted) return true;
    if (std::chrono::steady_clock::now() >= deadline) {
      throw LockedError(PathForPerson(configuration_.GetDatabaseID()) +
                        ": others hold the database\n" + HoldersText(GetOthers()) + kHint);
    }
    if (isFirst) Announce(wait, console);
    Pause();
  }
  return false;
}

IndexingAccess::Answer IndexingAccess::Ask(TimeSpan term) {
  const std::string before = access_.GetErrorText();
  if (access_.GetIndexingAccess(term) == 0) {
    if (access_.WasRefused()) return Answer::kRefused;
    if (access_.GetErrorText() == before) return Answer::kFileBusy;
    throw CommandError(AccessFailureText(configuration_, access_.GetErrorText()));
  }
  hasLine_ = true;
  if (!event_) event_ = GetStopIndexingEvent(configuration_.GetIndexName().c_str(), 1);
  renewAt_ = access_.GetLastUpdateTime() + kRenewal;
  expires_ = access_.GetLastUpdateTime() + term;
  const bool isGranted = access_.GetIndexingStatus() == TavoDBAccess::kIndexing;
  return isGranted ? Answer::kGranted : Answer::kRequested;
}

void IndexingAccess::Keep() {
  if (DateTime::Now() >= renewAt_) KeepFor(kTerm);
}

void IndexingAccess::KeepFor(TimeSpan term) {
  const DateTime expires = expires_;
  const Answer answer = Ask(term);
  if (answer == Answer::kGranted && access_.WasRenewed()) return;
  if (answer == Answer::kFileBusy && DateTime::Now() < expires) {
    renewAt_ = DateTime::Now() + kRetry;
    return;
  }
  throw LockedError(PathForPerson(configuration_.GetDatabaseID()) +
                    ": this indexer was away for too long and has lost its access\n" +
                    HoldersText(GetOthers()) + "What it had not stored is not in the index");
}

bool IndexingAccess::IsStopRequested() const {
  return signal_.IsSet() || (event_ && event_->IsSet());
}

// Everybody but this indexer.
std::vector<AccessEntry> IndexingAccess::GetOthers() const {
  std::vector<AccessEntry> others = access_.GetHolders();
  if (!access_.WasRefused() && hasLine_) {
    std::erase_if(others, [](const AccessEntry& holder) { return holder.IsIndexer(); });
  }
  return others;
}

void IndexingAccess::Announce(std::chrono::seconds wait, Console& console) const {
  console.err << PathForPerson(configuration_.GetDatabaseID())
              << ": others hold the database; waiting for up to " << wait.count() << " seconds\n"
              << HoldersText(GetOthers()) << kHint << std::endl;
}

// Short enough for who presses Ctrl-C.
void IndexingAccess::Pause() const {
  for (int i = 0; i < 10 && !IsStopRequested(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
}

}  // namespace vemra::commands
