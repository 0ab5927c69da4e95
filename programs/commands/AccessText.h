#pragma once

#include <string>
#include <vector>

#include "Support/definition/FileCFG.h"
#include "Support/services/AccessEntry.h"

// The access file of a database in words for people.
namespace vemra::commands {

// "[Indexing] of thread 1A4", "SERVER7:2F0".
std::string HolderText(const AccessEntry& holder);
// One line, indented, for each holder: who, when last renewed, until when. A holder whose expiry
// has passed on this computer's clock is marked: it may be dead.
std::string HoldersText(const std::vector<AccessEntry>& holders);
// What an access file that cannot be used is told with; errorText as TavoDBAccess keeps it. Empty:
// others had it locked all the time.
std::string AccessFailureText(const CTavoFileCFG& configuration, const std::string& errorText);

}  // namespace vemra::commands
