#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Support/Export.h"

namespace vemra {

class INIWorker;

// Maps folders of indexed documents to the URLs under which a web server publishes them; kept in
// the section "Path2URL" of the database's configuration file. Paths compare without regard to
// case, by lower-casing them. Used by one thread at a time.
class SUPPORT_API TavoPath2URL {
 public:
  // Adds the stored pairs; without keep the map is emptied first. A pair counts only when both keys
  // are present and the path is not empty. Returns 1.
  int Load(INIWorker& reader, int keep = 0);
  // Writes the pairs in their current order. Returns 0 when a write fails.
  int Save(INIWorker& writer) const;

  void Add(const std::string& path, const std::string& url);
  void RemoveAll();
  int GetCount() const { return static_cast<int>(pairs_.size()); }
  // Indices below GetCount.
  const std::string& GetPath(int index) const { return pairs_[index].path; }
  const std::string& GetURL(int index) const { return pairs_[index].url; }

  // Ascending by path; equal paths keep their order. Look-ups require it.
  void Sort();
  // The last pair whose path is less than or equal to the given one; -1 when there is none.
  int FindPath(const std::string& path) const;
  // The URL for a path, with slashes, or the path unchanged and the untranslated flag set. Kept:
  // only the pair that FindPath gives is tried, and its path need not end at a folder boundary.
  std::string TranslatePath(const std::string& path);
  // Whether any path could not be translated since the map was made; never cleared.
  int IsUntranslated() const { return untranslated_; }

 private:
  struct Pair {
    std::string path;
    std::string url;
    std::string sortKey;  // the path in lower case
  };

  std::vector<Pair> pairs_;
  int untranslated_ = 0;
};

}  // namespace vemra
