#include "Support/foundation/Paths.h"

#include <algorithm>
#include <string_view>

#include "Support/foundation/Ascii.h"
#include "Support/platform/Files.h"
#include "Support/platform/Paths.h"
#include "Support/platform/Process.h"

namespace vemra {
namespace {

constexpr char kSlash = '\\';

bool EndsInSlash(const std::string& p) {
  return !p.empty() && p.back() == kSlash;
}

// Joins a rel that is rooted on the current drive.
std::string ConnectToDrive(const std::string& base, const std::string& rel) {
  const std::size_t colon = base.find(':');
  return colon == std::string::npos ? rel : base.substr(0, colon) + rel;
}

// Applies a folder name that begins with a dot to folder, which ends in a backslash or is empty.
// However many dots it has, every cut after the first finds the backslash that the first has kept.
bool ApplyDots(std::string_view dots, std::string& folder) {
  if (dots.size() == 1) return true;
  RemoveLastSlash(folder);
  for (const char c : dots.substr(1)) {
    const std::size_t slash = folder.rfind(kSlash);
    if (c != '.' || slash == std::string::npos) return false;
    folder.resize(slash + 1);
  }
  return true;
}

bool EnterFolder(std::string_view name, std::string& folder) {
  if (name.empty()) return false;
  if (name[0] == '.') return ApplyDots(name, folder);
  folder += name;
  folder += kSlash;
  return true;
}

// Takes the folders that both paths begin with off both.
void RemoveCommonFolders(std::string_view& path, std::string_view& base) {
  while (!base.empty() && !path.empty()) {
    const std::size_t slash = base.find(kSlash);
    if (path.find(kSlash) != slash || slash == std::string_view::npos) return;
    if (!platform::IsSameName(path.substr(0, slash), base.substr(0, slash))) return;
    path.remove_prefix(slash + 1);
    base.remove_prefix(slash + 1);
  }
}

bool EnsureFolder(const std::string& path) {
  // Another process may create it in between.
  return platform::FolderExists(path) || platform::MakeFolder(path) || platform::FolderExists(path);
}

}  // namespace

int IsAbsolutePath(const std::string& p) {
  if (p.size() < 2) return 0;
  return (p[0] == kSlash && p[1] == kSlash) ||
         (IsAsciiAlpha(static_cast<unsigned char>(p[0])) && p[1] == ':');
}

void RemoveLastSlash(std::string& p) {
  if (EndsInSlash(p)) p.pop_back();
}

std::string ConnectPaths(const std::string& base, const std::string& rel) {
  if (rel.empty() || IsAbsolutePath(rel)) return rel;
  if (rel[0] == kSlash) return ConnectToDrive(base, rel);
  std::string result = base;
  if (!base.empty() && !EndsInSlash(base)) result += kSlash;
  std::string_view rest = rel;
  for (std::size_t end = rest.find(kSlash); end != std::string_view::npos;
       end = rest.find(kSlash)) {
    if (!EnterFolder(rest.substr(0, end), result)) return "";
    rest.remove_prefix(end + 1);
  }
  return result += rest;
}

std::string MakeRelativePath(const std::string& path, const std::string& base) {
  if (path.size() < 2 || base.size() < 2 || path[1] != base[1]) return path;
  if (!platform::IsSameName(path.substr(0, 1), base.substr(0, 1))) return path;
  const std::string baseFolder = base.substr(2) + kSlash;
  std::string_view up = baseFolder;
  std::string_view down = std::string_view(path).substr(2);
  RemoveCommonFolders(down, up);
  if (up.empty()) return std::string(down);
  if (down.empty()) return "";
  // Kept: a backslash that up begins with is not counted.
  const auto levels = static_cast<std::size_t>(std::count(up.begin() + 1, up.end(), kSlash));
  std::string result(levels + 1, '.');
  result += kSlash;
  return result += down;
}

int CreatePath(const std::string& path, int lastIsFile) {
  for (std::size_t slash = path.find(kSlash, 1); slash != std::string::npos;
       slash = path.find(kSlash, slash + 1)) {
    if (!EnsureFolder(path.substr(0, slash))) return 0;
  }
  return lastIsFile != 0 || EnsureFolder(path);
}

void ReplaceDir(const std::string& path, const std::string& dir, std::string& out) {
  const std::size_t slash = path.rfind(kSlash);
  out = dir + (slash == std::string::npos ? path : path.substr(slash));
}

std::string GetAppDirectory() {
  const std::string program = platform::GetProgramFileName();
  const std::size_t slash = program.rfind(kSlash);
  return slash == std::string::npos ? "" : program.substr(0, slash);
}

}  // namespace vemra
