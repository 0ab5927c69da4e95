#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"
#include "Support/foundation/VemraConfig.h"

namespace vemra {

class TavoLog;

// What is counted for each database.
enum DBEvents : std::uint32_t {
  kNoEvent = 0,  // never counted
  kQueryPerformed = 1,
  kQueryRejected = 2,
  kDictionaryQuery = 3,
  kDocumentViewed = 4,
  kDatabaseStarted = 5,
  kDatabaseStopped = 6,
  kDatabaseUpdated = 7,
};

// Counts the events of each database in memory and writes the counts into the log from time to
// time. Counts wrap at 2^32. A value that is none of the events is never counted, and its count is
// 0.
//
// With a non-zero locking flag any thread may call, each operation under the statistics' lock;
// without it one thread at a time. The holder of the lock may take it again.
class SUPPORT_API TavoStatistic {
 public:
  // Programs use GetStatist; tests construct their own. The configuration must outlive it.
  explicit TavoStatistic(int locking, const VemraConfig& config = VemraConfig::GetVemraConfig());
  TavoStatistic(const TavoStatistic&) = delete;
  TavoStatistic& operator=(const TavoStatistic&) = delete;

  // The process's statistics, created on first use, with the flag of that use, and destroyed at
  // process end.
  static TavoStatistic& GetStatist(int locking = 1);

  void Occured(const std::string& databaseName, DBEvents event);

  // Sets one count of the database to 0, or all of them when the event is kNoEvent. The empty name
  // with kNoEvent resets every database, with an event none. Creates nothing.
  void ResetDatBaseEvent(const std::string& databaseName, DBEvents event);

  // 0 when nothing was counted under the name. The empty name gives the sum over all databases, but
  // only when something was counted under the empty name: kept, callers tell the two apart by it.
  std::uint32_t HowMany(const std::string& databaseName, DBEvents event) const;

  // Writes the counts of each database into its own log file, at the level "Information", and
  // starts the interval anew; counts are kept. Without force only when the configuration's dump
  // interval, asked for at each call, has passed since the last dump or the construction. The log
  // drops the messages like any others below the spy level; the dump counts as made. Null: no
  // effect.
  void Dump(TavoLog* log, int force);

  // The lock of the operations, for std::lock_guard: to read and reset a count in one, say.
  void lock() const { lock_.lock(); }
  void unlock() const { lock_.unlock(); }

 private:
  using Counters = std::array<std::uint32_t, 9>;  // by event; the first and the last stay 0

  std::unique_lock<std::recursive_mutex> LockIfAsked() const;
  bool IsDumpDue(DateTime now) const;

  const VemraConfig& config_;
  mutable std::recursive_mutex lock_;
  std::map<std::string, Counters> counters_;  // by database name
  int locking_;
  DateTime lastDump_;
};

}  // namespace vemra
