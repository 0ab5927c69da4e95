#pragma once

#include <memory>
#include <string>

#include "Support/foundation/RegistryKey.h"

namespace vemra::platform {

// The registry store below the local machine's root; path is the whole path below that root. Any
// thread may call.

// Null when the key does not exist or cannot be opened.
std::unique_ptr<RegistryKey> OpenRegistryKey(const std::string& path, RegistryAccess access);
// Opens the key, creating what is missing of the path. Null on failure.
std::unique_ptr<RegistryKey> CreateRegistryKey(const std::string& path, RegistryAccess access);

// Closes the process's connection to the store; the next call looks for the store anew. For tests
// that name a store of their own. Does nothing on Windows.
void CloseRegistryStore();

}  // namespace vemra::platform
