#include "programs/commands/Configuration.h"

#include <filesystem>

#include "Support/foundation/HostPath.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/SettingsLine.h"

namespace vemra::commands {

void LoadConfiguration(const std::string& path, CTavoFileCFG& configuration) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(ToHostPath(path), error)) {
    throw CommandError(PathForPerson(path) + ": there is no such database");
  }
  if (configuration.Load(path) != 0) return;
  throw CommandError(AtSetting(path, "General Definitions", "IndexName",
                               "[General Definitions] has no IndexName, or it cannot be read"));
}

}  // namespace vemra::commands
