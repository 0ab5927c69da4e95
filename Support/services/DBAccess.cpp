#include "Support/services/DBAccess.h"

#include <algorithm>
#include <cstdio>

#include "Support/platform/ComputerName.h"
#include "Support/platform/Process.h"

namespace vemra {

TavoDBAccess::TavoDBAccess(const std::string& path)
    : path_(path), ownerThread_(platform::GetThreadId()) {}

int TavoDBAccess::GetSearchAccess(TimeSpan timeout) {
  return RunCycle([&] { return GetSearchAccessHelper(now_ + timeout); });
}

int TavoDBAccess::ReleaseSearchAccess() {
  return RunCycle([&] { return ReleaseSearchAccessHelper(); });
}

int TavoDBAccess::GetIndexingAccess(TimeSpan timeout) {
  return RunCycle([&] { return GetIndexingAccessHelper(now_ + timeout); });
}

int TavoDBAccess::ReleaseIndexingAccess() {
  return RunCycle([&] { return ReleaseIndexingAccessHelper(); });
}

std::vector<AccessEntry> TavoDBAccess::GetHolders() const {
  std::vector<AccessEntry> holders;
  for (const auto& [key, entry] : entries_) holders.push_back(entry);
  return holders;
}

std::string TavoDBAccess::MakeKey(const char* name, std::uint32_t threadId) {
  static char key[64];  // kept: one for all objects, see Owners
  std::snprintf(key, sizeof key, "%s:%lX", name, static_cast<unsigned long>(threadId));
  return key;
}

// --- the cycle ---

int TavoDBAccess::RunCycle(const std::function<int()>& act) {
  refused_ = false;
  AccessFile file = ReadFile();
  if (!file.IsOpen()) return 0;
  const int result = act();
  refused_ = result == 0;
  return WriteFile(file) != 0 ? result : 0;
}

AccessFile TavoDBAccess::OpenFile() {
  AccessFile file(path_);
  file.Open(&errorText_);
  return file;
}

AccessFile TavoDBAccess::ReadFile() {
  AccessFile file = OpenFile();
  if (!file.IsOpen()) return file;
  const DateTime previous = now_;
  now_ = DateTime::Now();
  if (LoadData(file, now_ - previous) == 0) return AccessFile(path_);
  DetermineIndexingStatus();
  return file;
}

int TavoDBAccess::LoadData(AccessFile& file, TimeSpan elapsed) {
  AgeEntries(elapsed);
  if (ReadFile(file) == 0) return 0;
  DropExpiredEntries();
  return 1;
}

// What the file no longer holds looks expired from the next second on.
void TavoDBAccess::AgeEntries(TimeSpan elapsed) {
  for (auto& [key, entry] : entries_) {
    entry.isInFile = false;
    entry.expires = entry.clockTime;
    entry.clockTime = entry.clockTime + elapsed;
  }
}

int TavoDBAccess::ReadFile(AccessFile& file) {
  return file.ReadLines([this](const char* line) { return ParseSearchLine(line); }, &errorText_);
}

int TavoDBAccess::ParseSearchLine(const char* line) {
  Entry read;
  if (ParseAccessLine(line, read) == 0) return 0;
  read.isInFile = true;
  const std::string key = read.IsIndexer() ? read.name : MakeKey(read.name.c_str(), read.threadId);
  const auto [place, isNew] = entries_.emplace(key, read);
  Entry& known = place->second;
  if (isNew) return 1;
  if (known.threadId != read.threadId) {
    known = read;
    return 1;
  }
  known.isInFile = true;
  known.lastUpdate = read.lastUpdate;
  known.expires = std::max(known.expires, read.expires);
  return 1;
}

void TavoDBAccess::DropExpiredEntries() {
  std::string computer;
  if (!platform::GetThisComputerName(&computer)) computer.clear();
  std::erase_if(entries_, [&](const auto& item) {
    const Entry& entry = item.second;
    return entry.expires < entry.clockTime || (entry.expires < now_ && entry.name == computer);
  });
}

void TavoDBAccess::DetermineIndexingStatus() {
  status_ = FindIndexer(kIndexRequestName) != nullptr ? kRequested : kFree;
  if (FindIndexer(kIndexingName) == nullptr) return;
  entries_.erase(kIndexRequestName);  // a grant supersedes a request
  status_ = kIndexing;
}

int TavoDBAccess::WriteFile(AccessFile& file) {
  return file.Write(GetHolders(), &errorText_);
}

int TavoDBAccess::InternalError(const char* text) {
  errorText_ = text == nullptr ? "Internal Error." : text;
  return 0;
}

// --- what an operation does to the entries ---

int TavoDBAccess::GetSearchAccessHelper(DateTime newExpiry) {
  if (status_ == kIndexing) {
    return InternalError("Indexing in progress; searches are not allowed.");
  }
  if (status_ == kRequested) return InternalError("Index requested; searches are not allowed.");
  if (status_ != kFree) return InternalError();
  std::string computer;
  if (!platform::GetThisComputerName(&computer)) return InternalError("GetComputerName() failed.");
  const auto [place, isNew] = entries_.try_emplace(MakeKey(computer.c_str(), ownerThread_));
  Entry& entry = place->second;
  if (isNew) {
    entry.clockTime = now_;
    entry.expires = newExpiry;
    entry.threadId = ownerThread_;
    entry.name = computer;
  }
  Renew(entry, newExpiry);
  return 1;
}

int TavoDBAccess::ReleaseSearchAccessHelper() {
  std::string computer;
  if (!platform::GetThisComputerName(&computer)) return InternalError("GetComputerName() failed.");
  entries_.erase(MakeKey(computer.c_str(), ownerThread_));
  return 1;
}

int TavoDBAccess::GetIndexingAccessHelper(DateTime newExpiry) {
  if (status_ == kFree) {
    AddIndexer(newExpiry);
    return 1;
  }
  if (status_ != kIndexing && status_ != kRequested) return InternalError();
  Entry* const entry = FindIndexer(status_ == kIndexing ? kIndexingName : kIndexRequestName);
  if (entry == nullptr) return InternalError();
  if (entry->threadId != ownerThread_) {
    return InternalError(status_ == kIndexing
                             ? "The database is being indexed by another application."
                             : "Index requested by another application.");
  }
  renewed_ = entry->isInFile;
  Renew(*entry, newExpiry);
  if (status_ == kRequested && entries_.size() == 1) PromoteRequest();
  return 1;
}

int TavoDBAccess::ReleaseIndexingAccessHelper() {
  if (status_ == kFree) return 1;
  const char* const name = status_ == kIndexing ? kIndexingName : kIndexRequestName;
  const Entry* const entry = FindIndexer(name);
  if (entry == nullptr) return InternalError();
  if (entry->threadId != ownerThread_) {
    return InternalError("This thread does not have indexing access.");
  }
  entries_.erase(name);
  return 1;
}

TavoDBAccess::Entry* TavoDBAccess::FindIndexer(const char* name) {
  const auto found = entries_.find(name);
  return found == entries_.end() ? nullptr : &found->second;
}

void TavoDBAccess::AddIndexer(DateTime expiry) {
  status_ = entries_.empty() ? kIndexing : kRequested;
  Entry entry;
  entry.clockTime = now_;
  entry.lastUpdate = now_;
  entry.expires = expiry;
  entry.threadId = ownerThread_;
  entry.name = status_ == kIndexing ? kIndexingName : kIndexRequestName;
  entries_[entry.name] = entry;
  renewed_ = false;
}

void TavoDBAccess::PromoteRequest() {
  auto request = entries_.extract(kIndexRequestName);
  request.key() = kIndexingName;
  request.mapped().name = kIndexingName;
  entries_.insert(std::move(request));
  status_ = kIndexing;
}

void TavoDBAccess::Renew(Entry& entry, DateTime newExpiry) const {
  entry.lastUpdate = now_;
  entry.expires = std::max(entry.expires, newExpiry);
}

}  // namespace vemra
