#include "programs/commands/Languages.h"

#include <filesystem>
#include <optional>
#include <set>

#include "Support/foundation/HostPath.h"
#include "Support/foundation/Paths.h"
#include "Support/foundation/Registry.h"

namespace vemra::commands {
namespace {

namespace fs = std::filesystem;

// Beside the program where it is installed, and in the source tree that it was built from.
std::vector<fs::path> PackFolders() {
  const fs::path program = ToHostPath(GetAppDirectory());
  return {program.parent_path() / "share" / "vemra" / "packs", fs::path(VEMRA_PACKS)};
}

std::optional<fs::path> FindPack(const std::string& name) {
  if (name.find('/') != std::string::npos) return std::nullopt;
  for (const fs::path& folder : PackFolders()) {
    const fs::path pack = folder / (name + ".pack");
    std::error_code error;
    if (fs::is_regular_file(pack, error)) return pack;
  }
  return std::nullopt;
}

bool HasRegisteredFile(const std::string& name) {
  std::string path;
  std::error_code error;
  return GetLanguagePath(name, path) != 0 && fs::is_regular_file(ToHostPath(path), error);
}

}  // namespace

bool RegisterLanguage(const std::string& name) {
  if (HasRegisteredFile(name)) return true;
  const std::optional<fs::path> pack = FindPack(name);
  return pack && SetTavoValue("Languages\\" + name, "Path", FromHostPath(pack->string())) != 0;
}

std::string FindPackFile(const std::string& name) {
  std::string path;
  if (HasRegisteredFile(name) && GetLanguagePath(name, path) != 0) return ToHostPath(path);
  const std::optional<fs::path> pack = FindPack(name);
  return pack ? pack->string() : std::string();
}

std::vector<std::string> ListLanguages() {
  std::vector<std::string> registered;
  EnumKeys("Languages", registered);
  std::set<std::string> names;
  for (const std::string& name : registered) {
    if (HasRegisteredFile(name)) names.insert(name);
  }
  for (const fs::path& folder : PackFolders()) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
      if (entry.path().extension() == ".pack") names.insert(entry.path().stem().string());
    }
  }
  std::vector<std::string> list{kBuiltInLanguage};
  list.insert(list.end(), names.begin(), names.end());
  return list;
}

}  // namespace vemra::commands
