#pragma once

#include <cstdint>
#include <string>

// Error codes are numbered as on Windows on both systems. Every operation of this folder that
// returns false leaves its code as the calling thread's last error.
namespace vemra::platform {

inline constexpr std::uint32_t kFileNotFound = 2;
inline constexpr std::uint32_t kPathNotFound = 3;
inline constexpr std::uint32_t kAccessDenied = 5;
inline constexpr std::uint32_t kInvalidHandle = 6;
inline constexpr std::uint32_t kNoMoreFiles = 18;
inline constexpr std::uint32_t kSharingViolation = 32;
inline constexpr std::uint32_t kInvalidName = 123;
inline constexpr std::uint32_t kAlreadyExists = 183;
inline constexpr std::uint32_t kNotAFolder = 267;

// The calling thread's last error; 0 when nothing has failed yet.
std::uint32_t GetLastErrorCode();
void SetLastErrorCode(std::uint32_t code);

// The system's text for a code, without a line end; empty when it has none.
std::string GetErrorText(std::uint32_t code);

// Shows a text where a developer looks for it: in the attached debugger on Windows, on the
// standard error output on Linux.
void WriteDebugOutput(const char* text);

}  // namespace vemra::platform
