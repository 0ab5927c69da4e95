#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/foundation/RegistryKey.h"

namespace vemra {

// The root of the machine-wide settings, below the local machine.
constexpr char kRegistryRoot[] = "SOFTWARE\\TAVO\\";

// The machine-wide settings: a tree of keys with typed values below that root. On Windows it is the
// registry. On Linux it is one database file: the one that VEMRA_REGISTRY names, else
// /var/lib/vemra/registry.db where that folder can be written, else vemra/registry.db in the user's
// data folder. It is opened once per process; a busy store is waited for, up to five seconds a
// call; one that is damaged makes the calls fail.
//
// Sub-keys are relative to the root, components parted by backslashes. Results are 1 and 0; nothing
// is thrown. Any thread may call any of these.

// Where the store is, for people: on Linux the path of its file, empty when there is no place for
// one; on Windows "HKEY_LOCAL_MACHINE".
SUPPORT_API std::string GetRegistryLocation();

// Null when the key does not exist or cannot be opened.
SUPPORT_API std::unique_ptr<RegistryKey> GetTavoKey(const std::string& subKey,
                                                    RegistryAccess access);
// Opens the key, creating it and those above it where they are missing. Null on failure.
SUPPORT_API std::unique_ptr<RegistryKey> CreateTavoKey(const std::string& subKey,
                                                       RegistryAccess access);

// A string of at most maxLength characters; a longer one, or another type, fails.
SUPPORT_API int GetTavoValue(const std::string& subKey, const std::string& name, std::string& text,
                             std::size_t maxLength);
// A binary value. size is the buffer's size in bytes, and then the number of bytes read; when the
// buffer is too small the call fails and size is the number needed.
SUPPORT_API int GetTavoValue(const std::string& subKey, const std::string& name, void* buffer,
                             std::uint32_t& size);
// A number; a value of another type or size fails.
SUPPORT_API int GetTavoValue(const std::string& subKey, const std::string& name,
                             std::uint32_t& number);

// These create the key where it is missing. A string ends at its first NUL.
SUPPORT_API int SetTavoValue(const std::string& subKey, const std::string& name,
                             const std::string& text);
SUPPORT_API int SetTavoValue(const std::string& subKey, const std::string& name,
                             std::uint32_t number);
SUPPORT_API int SetTavoValue(const std::string& subKey, const std::string& name, const void* buffer,
                             std::uint32_t size);

// Fails when the key or the value is missing.
SUPPORT_API int DeleteTavoValue(const std::string& subKey, const std::string& name);
// Deletes the child key below the sub-key. Fails for an empty child name, and for a child that has
// children.
SUPPORT_API int DeleteTavoKey(const std::string& subKey, const std::string& child);

// Appends the data of every value in registry order, each up to its first NUL. The walk ends early,
// still with 1, at a value whose name exceeds 255 characters or whose data exceeds 256 bytes: kept,
// callers rely on short lists.
SUPPORT_API int EnumValues(const std::string& subKey, std::vector<std::string>& values);
// Appends the name of every child key; 1 also when there is none.
SUPPORT_API int EnumKeys(const std::string& subKey, std::vector<std::string>& names);

// "Path" of the language's key below "Languages", up to 260 characters.
SUPPORT_API int GetLanguagePath(const std::string& language, std::string& path);
// "Path", up to 260 characters, and "Filters", up to 255, of the text filter's key below
// "Talking Heads".
SUPPORT_API int GetTalkingHeadPath(const std::string& filter, std::string& path);
SUPPORT_API int GetTalkingHeadFilter(const std::string& filter, std::string& filters);

// The registered databases: values "Name1", "Name2", ... of "Vemra Server\Databases". All values of
// that key are counted, so nothing else may be stored there.
// Appends each name in order; 0 at the first that cannot be read.
SUPPORT_API int GetListOfDBNames(std::vector<std::string>& names);
// Deletes the values "Name1" to "Name" + the count; 0 when one of them could not be deleted.
SUPPORT_API int DeleteListOfDBNames();
// Stores the names from "Name1" on and leaves further values alone; 0 at the first failed write.
SUPPORT_API int WriteListOfDBNames(const std::vector<std::string>& names);

// "DBRoot" in section "Vemra Server\Databases" of the host application's profile. Fails when the
// key "Vemra Server\Databases" does not exist or the setting is missing or empty; root is then
// unchanged.
SUPPORT_API int GetDBRoot(std::string& root);
// The host application's profile: a settings file in the Windows path form, named after the running
// program, beside it, with the extension ".ini", until the program sets another. An empty path
// restores that. Set at start-up, before other threads run.
SUPPORT_API void SetHostProfile(const std::string& path);
SUPPORT_API std::string GetHostProfile();

}  // namespace vemra
