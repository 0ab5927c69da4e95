#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Support/Export.h"

// The system's header defines this name as a macro; a client that has included it first calls the
// forwarders below.
#pragma push_macro("FindNextFile")
#undef FindNextFile

namespace vemra {

struct CDirHandle;

// Walks a folder, on request with its subfolders, and yields the files whose names match. The walk
// is depth-first: a subfolder is entered where it is met; entries come in the system's order. It
// keeps its own stack and few open handles, so depth costs memory only. A link that leads back to a
// folder being walked is not entered. A folder that cannot be read yields nothing and leaves its
// error. Used by one thread at a time.
class SUPPORT_API CDirScan {
 public:
  CDirScan();
  ~CDirScan();
  CDirScan(const CDirScan&) = delete;
  CDirScan& operator=(const CDirScan&) = delete;

  // Begins a walk, ending an earlier one. filters: patterns joined by ';' or ',', matched without
  // regard to case; none matches every name. One trailing backslash of the root is dropped.
  void Scan(const std::string& root, const std::string& filters, int includeSubfolders);
  // Returns 1 and the next file's path, or 0 at the end.
  int FindNextFile(std::string& path);
  int FindNextFileA(std::string& path) { return FindNextFile(path); }
  int FindNextFileW(std::string& path) { return FindNextFile(path); }

  int MatchFilters(const std::string& name) const;
  void ParseFilters(const std::string& filters);
  static int IsSpecialDir(const std::string& name);  // "." and ".."

  // Walks the rest of what Scan began, deleting the files whose names match and each folder when
  // its listing ends; the root itself only when removeRoot is not 0. A folder that still holds
  // something stays. A link to a folder is never followed; it is removed when there are no filters.
  void DeleteSubtree(int removeRoot);

  void Cleanup();  // ends the walk
  // The system's error, numbered as on Windows, of the last folder that could not be read, or of
  // the last deletion that failed, since Scan; 0 for none. It outlives the end of the walk. A file
  // or a subfolder that vanishes meanwhile is no error; a missing root is.
  std::uint32_t GetLastError() const { return lastError_; }

 private:
  enum class Step { kEnd, kFile, kLinkedFolder, kFolderEnd };
  enum class LinkedFolders { kEnter, kReport };
  Step NextStep(std::string& name, LinkedFolders linkedFolders);
  bool OpenInnermost();
  void Enter(const std::string& name);
  void Leave();
  void RemoveLink(const std::string& path);
  void KeepErrorUnlessGone();

  std::string currentDir_;
  std::vector<std::string> filters_;  // lower-cased
  int includeSubfolders_ = 0;
  std::vector<std::unique_ptr<CDirHandle>> listings_;  // the innermost last
  std::uint32_t lastError_ = 0;
};

}  // namespace vemra

#pragma pop_macro("FindNextFile")
