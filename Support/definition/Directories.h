#pragma once

#include <string>

#include "Support/Export.h"

namespace vemra {

// Copies the files of a folder that match "*.*" (its subfolders are left out) into another, which
// is created when missing, overwriting what is there. Returns 0 when any copy failed; the others
// are made all the same. A folder without files to copy gives 1.
SUPPORT_API int CopyAllFiles(const std::string& fromDir, const std::string& toDir);

// Deletes every file and subfolder; the folder itself only when the flag is not 0.
SUPPORT_API void CleanDirectory(const std::string& dir, int removeRoot);

}  // namespace vemra
