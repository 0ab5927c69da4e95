#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"

namespace vemra {

// What the indexer's line bears in place of a computer name: one that indexes, and one that has
// only asked to.
inline constexpr char kIndexingName[] = "[Indexing]";
inline constexpr char kIndexRequestName[] = "[IndexRequest]";

// One holder of access to a database: a line of its access file.
struct AccessEntry {
  // The holder's present time on the holder's own clock, as estimated by who watches it: the
  // line's time when it was first seen, and the watcher's own elapsed time since. A line just read
  // has the line's time.
  DateTime clockTime;
  DateTime lastUpdate;         // when the holder last entered or renewed the line
  DateTime expires;            // the last second at which the line counts
  std::uint32_t threadId = 0;  // of the holder, on its computer
  std::string name;            // a searcher's computer, or one of the two names above; at most 16

  bool IsIndexer() const { return name == kIndexingName || name == kIndexRequestName; }
};

// The line of an entry, with its line end "\n": the name in 16 columns, the thread id in upper-case
// hexadecimal in 8, and both times, local, as "14:03:07 15/11/2026".
SUPPORT_API std::string FormatAccessLine(const AccessEntry& entry);

// Reads a line: a name of at most 16 characters that are not blank, a thread id in hexadecimal,
// hour:minute:second day/month/year, the word "expires", and the expiry in the same form. White
// space may stand before each of them, and whatever follows the last number is ignored; numbers
// have signs and leading zeros as scanf takes them. A number that is too large counts modulo 2^32
// in the thread id, and as the largest one in a date, whose parts beyond their range run over into
// the next unit. Returns 0, and leaves entry half filled, when any of it is missing.
SUPPORT_API int ParseAccessLine(const char* line, AccessEntry& entry);

}  // namespace vemra
