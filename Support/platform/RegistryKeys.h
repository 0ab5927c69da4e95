#pragma once

#include <filesystem>
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

// One value of a key, in one look-up of the store. 0 when the key or the value does not exist or
// cannot be read; value is then as it was.
int ReadRegistryValue(const std::string& path, const std::string& name, RegistryValue& value);

// Where the store is, for people: its file by host path, or the name of the root.
std::string GetRegistryLocation();

// For tests: sends every call of the process to a store of its own, until a call with an empty path
// ends that. On Linux the store is registry.db in the folder. On Windows it is a key of the current
// user that bears the folder's name; the end deletes it.
void RedirectRegistry(const std::filesystem::path& folder);

}  // namespace vemra::platform
