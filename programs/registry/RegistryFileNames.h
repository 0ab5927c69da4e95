#pragma once

#include <string>
#include <string_view>

#include "Support/foundation/Registry.h"

namespace vemra {

// The fixed texts of the registry editor's files.
constexpr std::string_view kUnicodeHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kAnsiHeader = "REGEDIT4";
constexpr std::string_view kUtf16Mark = "\xff\xfe";
constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";

// "HKEY_LOCAL_MACHINE\SOFTWARE\TAVO"
inline std::string RegistryRootName() {
  return "HKEY_LOCAL_MACHINE\\" + std::string(kRegistryRoot, sizeof kRegistryRoot - 2);
}

// Types whose data is text, in the characters of the file: a string, one with variables to expand,
// and a list of strings.
constexpr bool HoldsText(RegistryType type) {
  const auto number = static_cast<std::uint32_t>(type);
  return number == 1 || number == 2 || number == 7;
}

}  // namespace vemra
