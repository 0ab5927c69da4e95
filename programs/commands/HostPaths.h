#pragma once

#include <string>

namespace vemra::commands {

// People give and read host paths; the library uses the Windows form.

// The absolute form of a path that a person gave. Throws CommandError for a name that the Windows
// form cannot say.
std::string PathFromPerson(const std::string& hostPath);
// For people: the host path, or the path as it is when no host file can have it.
std::string PathForPerson(const std::string& path);

}  // namespace vemra::commands
