#pragma once

#include <memory>

#include "Support/Export.h"

namespace vemra {

// The named event by which any process asks a running indexer to stop. Once set it stays set.
// Used by one thread at a time.
class SUPPORT_API StopIndexingEvent {
 public:
  ~StopIndexingEvent();
  StopIndexingEvent(const StopIndexingEvent&) = delete;
  StopIndexingEvent& operator=(const StopIndexingEvent&) = delete;

  // Returns 1, and 0 when the system fails.
  int Set();
  // For the one who created it; always false for one who opened it.
  bool IsSet() const;

 private:
  friend SUPPORT_API std::unique_ptr<StopIndexingEvent> GetStopIndexingEvent(const char* name,
                                                                             int create);
  StopIndexingEvent();

  struct State;
  std::unique_ptr<State> state_;
};

// The stop event of the indexer of the database of this name: the system's event NAME ":stop" of
// this computer. The indexer creates it and watches it while it holds or requests indexing access;
// who wants it to stop opens it and sets it, and can do nothing else with it.
//
// create non-zero: not set, unless another creator of the same name lives and has been asked to
// stop; they share one event. create zero: null when there is no such event. On Linux the event
// lives as long as its creator, and what is asked of a dead one never reaches the next; on Windows
// it lives until everybody has closed it, so do not keep one that was opened. The name has no
// backslash and at most 200 bytes. Null also when the system fails. Any thread may call it.
SUPPORT_API std::unique_ptr<StopIndexingEvent> GetStopIndexingEvent(const char* name, int create);

}  // namespace vemra
