#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "Support/definition/FileCFG.h"
#include "Support/services/DBAccess.h"
#include "Support/services/StopIndexingEvent.h"
#include "programs/commands/Console.h"
#include "programs/commands/StopSignal.h"

namespace vemra::commands {

// Indexing access to a database, from Take for as long as it lives. Meanwhile Ctrl-C, a request to
// terminate, and vemra stop are requests to stop, and end nothing by themselves.
class IndexingAccess {
 public:
  // configuration is a loan. Takes nothing yet.
  explicit IndexingAccess(const CTavoFileCFG& configuration);
  ~IndexingAccess();
  IndexingAccess(const IndexingAccess&) = delete;
  IndexingAccess& operator=(const IndexingAccess&) = delete;

  // Asks until it is admitted, or for so long, and tells console who is in the way. False when it
  // was asked to stop. Throws LockedError when the time is up, and CommandError when the access
  // file cannot be used.
  bool Take(std::chrono::seconds wait, Console& console);
  // To be called often, and before anything is stored: renews the access in time. Throws
  // LockedError when it has been lost, as when this process was suspended beyond the expiry.
  void Keep();
  // The same at once, before a step that takes longer than a document.
  void KeepFor(TimeSpan term);
  bool IsStopRequested() const;

 private:
  // kFileBusy: others kept the file locked, so that nothing is known.
  enum class Answer { kGranted, kRequested, kRefused, kFileBusy };

  Answer Ask(TimeSpan term);
  std::vector<AccessEntry> GetOthers() const;
  void Announce(std::chrono::seconds wait, Console& console) const;
  void Pause() const;

  const CTavoFileCFG& configuration_;
  TavoDBAccess access_;
  StopSignal signal_;
  std::unique_ptr<StopIndexingEvent> event_;
  bool hasLine_ = false;  // a grant or a request
  DateTime renewAt_;
  DateTime expires_;
};

}  // namespace vemra::commands
