#include "Support/definition/Directories.h"

#include <vector>

#include "Support/definition/DirScan.h"
#include "Support/foundation/Paths.h"
#include "Support/platform/Files.h"

namespace vemra {

int CopyAllFiles(const std::string& fromDir, const std::string& toDir) {
  CDirScan scan;
  scan.Scan(fromDir, "*.*", 0);
  std::vector<std::string> files;  // all of them before any copy, which may go to the same folder
  for (std::string file; scan.FindNextFile(file) != 0;) files.push_back(file);

  CreatePath(toDir, 0);
  int copied = 1;
  std::string target;
  for (const std::string& file : files) {
    ReplaceDir(file, toDir, target);
    if (!platform::CopyFileOver(file, target)) copied = 0;
  }
  return copied;
}

void CleanDirectory(const std::string& dir, int removeRoot) {
  CDirScan scan;
  scan.Scan(dir, "", 1);
  scan.DeleteSubtree(removeRoot);
}

}  // namespace vemra
