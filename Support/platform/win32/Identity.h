#pragma once

#include <windows.h>

#include <string>

#include "Support/platform/Files.h"

namespace vemra::platform {

bool ReadFileInformation(const std::string& path, BY_HANDLE_FILE_INFORMATION* information);
FileIdentity IdentityOf(const BY_HANDLE_FILE_INFORMATION& information);

}  // namespace vemra::platform
