#include "Support/platform/PrivateProfile.h"

#include <windows.h>

#include "Support/platform/FileHandle.h"

namespace vemra::platform {

namespace {

// The system would look for a path without a folder in its own folder.
std::string MakeFull(const std::string& path) {
  std::string full(GetFullPathNameA(path.c_str(), 0, nullptr, nullptr), '\0');
  full.resize(GetFullPathNameA(path.c_str(), DWORD(full.size()), full.data(), nullptr));
  return full;
}

// What the system still holds back goes to the file, and is read from there again.
void Flush(const std::string& fullPath) {
  WritePrivateProfileStringA(nullptr, nullptr, nullptr, fullPath.c_str());
}

bool ReadWhole(FileHandle& file, std::string& bytes) {
  std::int64_t length = 0;
  if (!file.GetLength(&length) || std::uint64_t(length) > ProfileText::kMaxSize) return false;
  bytes.resize(std::size_t(length));
  std::size_t count = 0;
  if (!file.Read(bytes.data(), bytes.size(), &count)) return false;
  bytes.resize(count);
  return true;
}

// Grows the buffer until the answer leaves more than spare bytes of it free.
std::string ReadGrowing(const char* section, const char* key, const std::string& fallback,
                        std::uint32_t spare, const std::string& path) {
  std::string buffer(1024, '\0');
  for (;;) {
    const std::uint32_t length = QueryProfile(section, key, fallback.c_str(), buffer.data(),
                                              std::uint32_t(buffer.size()), path);
    if (length + spare < buffer.size() || buffer.size() > ProfileText::kMaxSize) {
      buffer.resize(length);
      return buffer;
    }
    buffer.resize(buffer.size() * 4);
  }
}

std::vector<std::string> SplitList(const std::string& list) {
  std::vector<std::string> names;
  for (std::size_t at = 0; at < list.size();) {
    const std::string name = list.c_str() + at;
    at += name.size() + 1;
    if (!name.empty()) names.push_back(name);
  }
  return names;
}

}  // namespace

std::uint32_t QueryProfile(const char* section, const char* key, const char* fallback, char* buffer,
                           std::uint32_t size, const std::string& path) {
  return GetPrivateProfileStringA(section, key, fallback, buffer, size, MakeFull(path).c_str());
}

bool WriteProfile(const char* section, const char* key, const char* value,
                  const std::string& path) {
  if (section == nullptr) return false;  // to the system it would mean a flush
  const std::string full = MakeFull(path);
  const bool written = WritePrivateProfileStringA(section, key, value, full.c_str()) != 0;
  Flush(full);
  return written;
}

std::string ReadProfileString(const std::string& section, const std::string& key,
                              const std::string& fallback, std::size_t limit,
                              const std::string& path) {
  if (limit == kNoLimit) return ReadGrowing(section.c_str(), key.c_str(), fallback, 1, path);
  std::string buffer(limit + 1, '\0');
  buffer.resize(QueryProfile(section.c_str(), key.c_str(), fallback.c_str(), buffer.data(),
                             std::uint32_t(buffer.size()), path));
  return buffer;
}

std::vector<std::string> ReadProfileSections(const std::string& path) {
  return SplitList(ReadGrowing(nullptr, nullptr, "", 2, path));
}

std::vector<std::string> ReadProfileKeys(const std::string& section, const std::string& path) {
  return SplitList(ReadGrowing(section.c_str(), nullptr, "", 2, path));
}

ProfileDraft LoadProfile(const std::string& path) {
  const std::string full = MakeFull(path);
  Flush(full);
  FileHandle file;
  std::string bytes;
  if (!file.Open(full, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting,
                 TavoFile::Share::kAll) ||
      !ReadWhole(file, bytes))
    return {};
  ProfileDraft draft;
  draft.text = ProfileText(std::move(bytes));
  return draft;
}

// The system's own calls rewrite the file in place; many edits do so once.
bool EditProfile(const std::vector<ProfileEdit>& edits, const std::string& path, ProfileBase base,
                 const ProfileDraft* /*draft*/) {
  const std::string full = MakeFull(path);
  Flush(full);
  FileHandle file;
  std::string bytes;
  if (!file.Open(full, TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenOrCreate,
                 TavoFile::Share::kDenyReadWrite) ||
      !ReadWhole(file, bytes))
    return false;
  bool changed = base == ProfileBase::kEmpty;
  if (changed) bytes.clear();
  ProfileText text(std::move(bytes));
  for (const ProfileEdit& edit : edits) changed |= text.Apply(edit);
  if (!changed) return true;
  bytes = text.Serialize();
  std::int64_t position = 0;
  const bool written = file.Seek(0, TavoFile::Origin::kBegin, &position) &&
                       file.Write(bytes.data(), bytes.size()) &&
                       file.SetLength(std::int64_t(bytes.size())) && file.Sync();
  file.Close();
  Flush(full);
  return written;
}

}  // namespace vemra::platform
