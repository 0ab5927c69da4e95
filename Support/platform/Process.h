#pragma once

#include <cstdint>
#include <string>

// What the process knows about itself and its computer. Paths are in the Windows form.
namespace vemra::platform {

// This library's own file name, without folder and extension.
inline constexpr char kLibraryBaseName[] = "Support";

// Full file name of the running program; empty when the system does not tell.
std::string GetProgramFileName();
std::string GetCurrentFolder();  // without a trailing backslash unless it is a drive's root
std::string GetTempFolder();     // with a trailing backslash

// The system's number of the calling thread, unique among all live threads of the computer. Asked
// anew at each call: after a fork the child's thread has a number of its own.
std::uint32_t GetThreadId();

}  // namespace vemra::platform
