#pragma once

#include <string>
#include <vector>

namespace vemra::commands {

// The pack that a new database gets when it can be found; else the built-in one.
inline constexpr const char* kUsualLanguage = "Western";
// Stands for the built-in pack, which has no file. A database stores it as no language at all.
inline constexpr const char* kBuiltInLanguage = "Default";

// Sees that the registry knows the language: a pack file NAME.pack of the program's own packs,
// which are installed beside it, is registered when there is no pack file behind the registered
// path, or no such path. False when the language cannot be found.
bool RegisterLanguage(const std::string& name);

// The host path of the language's pack file: the registered one, else one of the program's own
// packs; empty when there is none. Registers nothing.
std::string FindPackFile(const std::string& name);

// The languages that RegisterLanguage would find, in order, the built-in one first.
std::vector<std::string> ListLanguages();

}  // namespace vemra::commands
