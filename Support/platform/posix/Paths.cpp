#include "Support/platform/Paths.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "Support/foundation/Ascii.h"
#include "Support/platform/Errors.h"
#include "Support/platform/posix/Errno.h"

namespace vemra::platform {
namespace {

// A path cut into the host folder that it starts from and the names below it.
struct Parts {
  std::string folder;  // empty: the current folder
  std::vector<std::string_view> names;
};

bool IsSeparator(char c) {
  return c == '\\' || c == '/';
}

unsigned char Fold(char c) {
  return ToAsciiLower(static_cast<unsigned char>(c));
}

// The host folder that VEMRA_DRIVES gives for a drive letter or a share; empty when it gives none.
std::string_view FindMapping(std::string_view name) {
  const char* drives = std::getenv("VEMRA_DRIVES");
  std::string_view rest = drives == nullptr ? "" : drives;
  while (!rest.empty()) {
    const std::string_view entry = rest.substr(0, rest.find(';'));
    rest.remove_prefix(std::min(rest.size(), entry.size() + 1));
    const std::size_t equals = entry.find('=');
    if (equals == std::string_view::npos) continue;
    if (IsSameName(entry.substr(0, equals), name)) return entry.substr(equals + 1);
  }
  return {};
}

// Sets folder to where a drive starts and takes the drive off path.
bool StartFromDrive(std::string_view& path, std::string& folder) {
  const std::string_view letter = path.substr(0, 1);
  path.remove_prefix(2);
  if (Fold(letter[0]) == 'z') {
    folder = !path.empty() && IsSeparator(path[0]) ? "/" : "";
    return true;
  }
  folder = FindMapping(letter);
  return !folder.empty();
}

// The same for a path that begins with two separators: "\\server\share" and what is below it.
bool StartFromShare(std::string_view& path, std::string& folder) {
  std::size_t end = 2;
  while (end < path.size() && !IsSeparator(path[end])) ++end;
  if (end < path.size()) ++end;
  while (end < path.size() && !IsSeparator(path[end])) ++end;
  std::string share(path.substr(0, end));
  std::replace(share.begin(), share.end(), '/', '\\');
  path.remove_prefix(end);
  folder = FindMapping(share);
  return !folder.empty();
}

bool FindStart(std::string_view& path, std::string& folder) {
  if (path.empty()) return false;
  if (path.size() >= 2 && IsAsciiAlpha(static_cast<unsigned char>(path[0])) && path[1] == ':')
    return StartFromDrive(path, folder);
  if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
    return StartFromShare(path, folder);
  }
  folder = IsSeparator(path[0]) ? "/" : "";
  return true;
}

// Takes "." and ".." out by text. At a root, ".." stays there; in front of a relative path it is
// left to the system.
void AddName(std::string_view name, Parts& parts) {
  if (name.empty() || name == ".") return;
  const bool goesUp = name == "..";
  if (goesUp && !parts.names.empty() && parts.names.back() != "..") {
    parts.names.pop_back();
  } else if (!goesUp || parts.folder.empty()) {
    parts.names.push_back(name);
  }
}

bool SplitPath(std::string_view path, Parts& parts) {
  if (!FindStart(path, parts.folder)) return Fail(kPathNotFound);
  if (path.find(':') != std::string_view::npos) return Fail(kInvalidName);
  while (!path.empty()) {
    const auto end = std::find_if(path.begin(), path.end(), IsSeparator);
    const auto length = static_cast<std::size_t>(end - path.begin());
    AddName(path.substr(0, length), parts);
    path.remove_prefix(std::min(path.size(), length + 1));
  }
  return true;
}

void AppendName(std::string& folder, std::string_view name) {
  if (!folder.empty() && folder.back() != '/') folder += '/';
  folder += name;
}

bool Exists(const std::string& hostPath) {
  struct stat status {};
  return ::lstat(hostPath.c_str(), &status) == 0;
}

// The first name in byte order that is the given one but for case; empty when there is none.
std::string FindName(const std::string& folder, std::string_view name) {
  std::string found;
  DIR* const listing = ::opendir(folder.empty() ? "." : folder.c_str());
  if (listing == nullptr) return found;
  while (const dirent* entry = ::readdir(listing)) {
    const std::string_view candidate = entry->d_name;
    if (IsSameName(candidate, name) && (found.empty() || candidate < found)) found = candidate;
  }
  ::closedir(listing);
  return found;
}

// Follows the names down as far as they exist in any case; the rest keeps its spelling.
std::string FollowIgnoringCase(const Parts& parts) {
  std::string path = parts.folder;
  bool follows = true;
  for (const std::string_view name : parts.names) {
    std::string exact = path;
    AppendName(exact, name);
    if (follows && !Exists(exact)) {
      const std::string found = FindName(path, name);
      follows = !found.empty();
      if (follows) {
        AppendName(path, found);
        continue;
      }
    }
    path = std::move(exact);
  }
  return path;
}

}  // namespace

std::string ToHostPath(const std::string& path) {
  Parts parts;
  if (!SplitPath(path.c_str(), parts)) return "";
  std::string exact = parts.folder;
  for (const std::string_view name : parts.names) AppendName(exact, name);
  if (exact.empty()) return ".";
  return Exists(exact) ? exact : FollowIgnoringCase(parts);
}

std::string FromHostPath(const std::string& hostPath) {
  if (hostPath.find_first_of("\\:") != std::string::npos) return "";
  std::string path = !hostPath.empty() && hostPath[0] == '/' ? "Z:" : "";
  for (std::size_t i = 0; i < hostPath.size(); ++i) {
    if (hostPath[i] != '/') {
      path += hostPath[i];
    } else if (i == 0 || hostPath[i - 1] != '/') {
      path += '\\';
    }
  }
  return path;
}

bool IsSameName(std::string_view a, std::string_view b) {
  // No letter of ASCII occurs inside a longer character of UTF-8.
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Fold(x) == Fold(y); });
}

}  // namespace vemra::platform
