#include "Support/definition/Directories.h"

#include "Support/definition/DirScan.h"
#include "Support/foundation/Paths.h"
#include "Support/platform/Files.h"

namespace vemra {

int CopyAllFiles(const std::string& fromDir, const std::string& toDir) {
  int copied = CreatePath(toDir, 0);
  CDirScan scan;
  scan.Scan(fromDir, "*.*", 0);
  std::string file;
  std::string target;
  while (scan.FindNextFile(file) != 0) {
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
