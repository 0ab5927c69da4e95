#include "programs/commands/SearchAccess.h"

#include "programs/commands/AccessText.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/LockedError.h"

namespace vemra::commands {
namespace {

// A search takes far less; one that is killed keeps an indexer waiting for so long.
constexpr TimeSpan kTerm(60);

}  // namespace

SearchAccess::SearchAccess(const CTavoFileCFG& configuration)
    : access_(configuration.GetAccessFile()) {
  if (access_.GetSearchAccess(kTerm) != 0) return;
  const std::string& reason = access_.GetErrorText();
  if (access_.WasRefused() && access_.GetIndexingStatus() != TavoDBAccess::kFree) {
    throw LockedError(PathForPerson(configuration.GetDatabaseID()) + ": " + reason + "\n" +
                      HoldersText(access_.GetHolders()) +
                      "vemra access DB.cfg --release removes the line of a holder that is dead");
  }
  const std::string failure = AccessFailureText(configuration, reason);
  if (reason.empty()) throw LockedError(failure);
  throw CommandError(failure);
}

SearchAccess::~SearchAccess() {
  access_.ReleaseSearchAccess();
}

}  // namespace vemra::commands
