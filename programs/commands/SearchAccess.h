#pragma once

#include "Support/definition/FileCFG.h"
#include "Support/services/DBAccess.h"

namespace vemra::commands {

// Search access to a database for as long as it lives.
class SearchAccess {
 public:
  // Throws LockedError when an indexer holds the database, and CommandError when the access file
  // cannot be used.
  explicit SearchAccess(const CTavoFileCFG& configuration);
  ~SearchAccess();
  SearchAccess(const SearchAccess&) = delete;
  SearchAccess& operator=(const SearchAccess&) = delete;

 private:
  TavoDBAccess access_;
};

}  // namespace vemra::commands
