#include "programs/commands/AccessText.h"

#include "Support/services/DBAccess.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/TimeText.h"

namespace vemra::commands {

std::string HolderText(const AccessEntry& holder) {
  std::string key = TavoDBAccess::MakeKey(holder.name.c_str(), holder.threadId);
  if (!holder.IsIndexer()) return key;
  return holder.name + " of thread " + key.substr(key.rfind(':') + 1);
}

std::string HoldersText(const std::vector<AccessEntry>& holders) {
  std::string text;
  for (const AccessEntry& holder : holders) {
    text += "  " + HolderText(holder) + ", last renewed " + LocalText(holder.lastUpdate) +
            ", until " + LocalText(holder.expires) +
            (holder.expires < DateTime::Now() ? ", expired by this computer's clock\n" : "\n");
  }
  return text;
}

std::string AccessFailureText(const CTavoFileCFG& configuration, const std::string& errorText) {
  const std::string path = configuration.GetAccessFile();
  if (errorText.empty()) return PathForPerson(path) + ": others kept it locked";
  const bool namesPath = errorText.starts_with(path + ": ");
  return PathForPerson(path) + ": " + errorText.substr(namesPath ? path.size() + 2 : 0);
}

}  // namespace vemra::commands
