#include "Support/services/Statistic.h"

#include "Support/services/Log.h"

namespace vemra {

namespace {

constexpr std::int64_t kSecondsPerHour = 3600;

struct DumpLine {
  DBEvents event;
  const char* label;
};
constexpr DumpLine kDumpLines[] = {
    {kQueryPerformed, "\tPerformed queries:  "},  {kQueryRejected, "\tRejected queries:   "},
    {kDictionaryQuery, "\tDictionary queries: "}, {kDocumentViewed, "\tDocuments viewed:   "},
    {kDatabaseStarted, "\tStart count:        "}, {kDatabaseStopped, "\tStop count:         "},
    {kDatabaseUpdated, "\tUpdates:            "},
};

bool IsCounted(DBEvents event) {
  return event >= kQueryPerformed && event <= kDatabaseUpdated;
}

template <class Counters>
std::string DumpText(const std::string& databaseName, const Counters& counters) {
  std::string text = "Statistics for database '" + databaseName + "':\n";
  for (const DumpLine& line : kDumpLines) {
    text += line.label + std::to_string(counters[line.event]) + "\n";
  }
  return text;
}

}  // namespace

TavoStatistic::TavoStatistic(int locking, const VemraConfig& config)
    : config_(config), locking_(locking), lastDump_(DateTime::Now()) {}

TavoStatistic& TavoStatistic::GetStatist(int locking) {
  static TavoStatistic statistic(locking);
  return statistic;
}

void TavoStatistic::Occured(const std::string& databaseName, DBEvents event) {
  if (!IsCounted(event)) return;
  const auto guard = LockIfAsked();
  ++counters_[databaseName][event];
}

void TavoStatistic::ResetDatBaseEvent(const std::string& databaseName, DBEvents event) {
  const auto guard = LockIfAsked();
  if (databaseName.empty()) {
    if (event != kNoEvent) return;
    for (auto& [name, counters] : counters_) counters = {};
    return;
  }
  const auto found = counters_.find(databaseName);
  if (found == counters_.end()) return;
  if (event == kNoEvent) {
    found->second = {};
  } else if (IsCounted(event)) {
    found->second[event] = 0;
  }
}

std::uint32_t TavoStatistic::HowMany(const std::string& databaseName, DBEvents event) const {
  if (!IsCounted(event)) return 0;
  const auto guard = LockIfAsked();
  const auto found = counters_.find(databaseName);
  if (found == counters_.end()) return 0;
  if (!databaseName.empty()) return found->second[event];
  std::uint32_t sum = 0;
  for (const auto& [name, counters] : counters_) sum += counters[event];
  return sum;
}

void TavoStatistic::Dump(TavoLog* log, int force) {
  if (log == nullptr) return;
  const auto guard = LockIfAsked();
  const DateTime now = DateTime::Now();
  if (force == 0 && !IsDumpDue(now)) return;
  for (const auto& [name, counters] : counters_) {
    log->WriteMessage(kLogInformation, name, 1, "%s", DumpText(name, counters).c_str());
  }
  lastDump_ = now;
}

bool TavoStatistic::IsDumpDue(DateTime now) const {
  return now - lastDump_ >= TimeSpan(config_.GetDump() * kSecondsPerHour);
}

std::unique_lock<std::recursive_mutex> TavoStatistic::LockIfAsked() const {
  std::unique_lock guard(lock_, std::defer_lock);
  if (locking_ != 0) guard.lock();
  return guard;
}

}  // namespace vemra
