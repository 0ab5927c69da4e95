#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Support/foundation/DateTime.h"

namespace vemra::commands {

// One file of a database. path in the host's form; size and date only of one that exists.
struct FileStatus {
  std::string what;
  std::string path;
  std::optional<std::uint64_t> bytes;
  DateTime changed;

  bool Exists() const { return bytes.has_value(); }
};

// What is known of a database without opening it for a search.
struct DatabaseStatus {
  std::string name;
  std::string language;   // as configured; empty: the built-in one
  std::string pack;       // the pack's file in the host's form; empty without one
  std::string packFault;  // why the pack cannot be had; empty when it can
  bool loadable = false;
  DateTime lastUpdate;  // of the last one that ended well; 0 for never
  bool lastUpdateOk = true;
  DateTime nextUpdate;                // 0 when none is due
  std::optional<std::int64_t> texts;  // none when there is no index, or it cannot be read
  std::string indexFault;             // why it cannot be read
  std::vector<FileStatus> files;      // the index first
};

// definition: the .cfg file as a person named it. Throws CommandError when it cannot be loaded.
DatabaseStatus ReadDatabaseStatus(const std::string& definition);

}  // namespace vemra::commands
