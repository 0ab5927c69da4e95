#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"
#include "Support/services/AccessEntry.h"
#include "Support/services/AccessFile.h"

namespace vemra {

// Access to a database, which many searchers share or one indexer has alone, among the processes of
// several computers. Every holder has a line in the database's access file, with an expiry, so that
// one that dies stops in nobody's way for ever. While an indexer holds or has requested the
// database no new searcher is admitted; a request becomes indexing access once its line is the only
// one left.
//
//   searcher:  GetSearchAccess, search, ReleaseSearchAccess.
//   indexer:   GetIndexingAccess; while the status is kRequested, again and again; then index, and
//              call it again before the expiry; ReleaseIndexingAccess.
//   A refused indexer keeps the object and asks again: see the ageing of lines below.
//
// Every operation is one cycle: open the file, read it, change the entries in memory, write all of
// them back, close it; a refusal writes too, so that expired lines go. Operations return 1, and 0
// for a refusal or a failure, after which the error text says why. The error text keeps the last
// failure: success does not clear it. The file's locking waits up to five seconds in all (see
// AccessFile::Open); an operation that finds it locked all that time fails with the error text
// unchanged. A failed read leaves the file as it was.
//
// When a line expires. A line of this computer's searchers has expired once the clock has passed
// its expiry. Any other line, and every indexer's, is judged by its holder's clock, since clocks of
// computers disagree: this object takes the line's time for the holder's present when it first sees
// it and goes on by the time that passes here. So the line of a dead holder ages only in the eyes
// of an object that keeps watching it, and is gone at the latest one term (expiry less last update)
// after that object has first seen it; a new object begins anew. A line that is gone from the file
// lingers in memory through the second in which it was last seen, and is written back in it.
//
// Owners. An object belongs to the thread that constructed it; all its lines bear that thread's id,
// for ever. A searcher's line is told by computer and thread, so an object and another one of the
// same thread share a line. The indexer's line names no computer: it is told by the thread id alone
// (kept: the line has no room for both). When the line of an indexer in memory bears another thread
// id in the file it is another holder, whose clock starts anew. A line that somebody has written
// back in the second of its release is its owner's again: the thread of an indexer that has
// released its access does not ask anew before a term is over, or it may find itself beside a
// searcher.
//
// One thread at a time uses an object. The operations of all objects of a process must not overlap,
// as MakeKey has one buffer for all: the callers serialise them.
class SUPPORT_API TavoDBAccess {
 public:
  enum IndexingStatus {
    kFree = 0,       // nobody indexes
    kIndexing = 1,   // indexing in progress
    kRequested = 2,  // an indexer waits for the searchers to leave
  };

  // path of the access file, in the Windows form. Reads nothing yet.
  explicit TavoDBAccess(const std::string& path = "");
  ~TavoDBAccess() = default;  // leaves the file alone: an unreleased line stays until it expires
  TavoDBAccess(const TavoDBAccess&) = delete;
  TavoDBAccess& operator=(const TavoDBAccess&) = delete;

  // Registers this thread as a searcher until now + timeout. Asked again, it renews the line, whose
  // expiry only ever grows; calls are not counted. Refused while the status is not kFree.
  int GetSearchAccess(TimeSpan timeout);
  // Removes the line. 1 also when there was none.
  int ReleaseSearchAccess();

  // Asks for indexing access until now + timeout, or renews it or the request for it. 1 when it was
  // granted and when it was only requested: the status tells. Refused while another thread holds or
  // has requested it.
  int GetIndexingAccess(TimeSpan timeout);
  // Removes this thread's line, grant or request. 1 also when the status is kFree. The status stays
  // until the next operation.
  int ReleaseIndexingAccess();

  // The following speak of the last operation that read the file.
  DateTime GetLastUpdateTime() const { return now_; }  // when; 0 before the first
  int GetIndexingStatus() const { return status_; }
  // Every holder known, in the order of the file's lines.
  std::vector<AccessEntry> GetHolders() const;
  // Whether the last operation read the file and was refused. Of one that returned 0 otherwise, the
  // file could not be opened, read or written.
  bool WasRefused() const { return refused_; }
  // Whether the last successful GetIndexingAccess found the line that it renewed in the file. When
  // it did not, the line is new, and others may have had the database in between.
  bool WasRenewed() const { return renewed_; }

  const std::string& GetErrorText() const { return errorText_; }

  // "NAME:THREAD", the thread id in upper-case hexadecimal. Not for several threads at once.
  static std::string MakeKey(const char* name, std::uint32_t threadId);

 protected:
  // The steps of a cycle.
  AccessFile OpenFile();  // not open after a failure
  AccessFile ReadFile();  // opened, loaded, and the status determined; not open after a failure
  int LoadData(AccessFile& file, TimeSpan elapsed);
  int ReadFile(AccessFile& file);
  int ParseSearchLine(const char* line);
  void DetermineIndexingStatus();
  int GetSearchAccessHelper(DateTime newExpiry);
  int ReleaseSearchAccessHelper();
  int GetIndexingAccessHelper(DateTime newExpiry);
  int ReleaseIndexingAccessHelper();
  int WriteFile(AccessFile& file);
  int InternalError(const char* text = nullptr);  // sets the error text; returns 0

 private:
  struct Entry : AccessEntry {
    bool isInFile = false;  // as last read
  };
  using Entries = std::map<std::string, Entry>;

  int RunCycle(const std::function<int()>& act);
  void AgeEntries(TimeSpan elapsed);
  void DropExpiredEntries();
  Entry* FindIndexer(const char* name);
  void AddIndexer(DateTime expiry);
  void PromoteRequest();
  void Renew(Entry& entry, DateTime newExpiry) const;

  int status_ = kFree;
  std::string path_;
  std::string errorText_;
  Entries entries_;  // by MakeKey of a searcher, by name of an indexer
  DateTime now_;
  std::uint32_t ownerThread_;
  bool refused_ = false;
  bool renewed_ = false;
};

}  // namespace vemra
