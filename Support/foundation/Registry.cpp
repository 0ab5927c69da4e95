#include "Support/foundation/Registry.h"

#include <algorithm>
#include <cstring>

#include "Support/platform/PrivateProfile.h"
#include "Support/platform/Process.h"
#include "Support/platform/RegistryKeys.h"

namespace vemra {

namespace {

constexpr char kDatabases[] = "Vemra Server\\Databases";
constexpr char kLanguages[] = "Languages\\";
constexpr char kTalkingHeads[] = "Talking Heads\\";
constexpr char kPath[] = "Path";
constexpr std::size_t kMaxPath = 260;     // characters
constexpr std::size_t kMaxFilters = 255;  // characters
constexpr std::size_t kEnumBuffer = 256;  // bytes

int GetValue(const std::string& subKey, const std::string& name, RegistryType type,
             RegistryValue& value) {
  const bool read = platform::ReadRegistryValue(kRegistryRoot + subKey, name, value) != 0;
  return read && value.type == type ? 1 : 0;
}

int SetValue(const std::string& subKey, const RegistryValue& value) {
  const auto key = CreateTavoKey(subKey, RegistryAccess::kWrite);
  return key ? key->SetValue(value) : 0;
}

RegistryValue StringValue(const std::string& name, const std::string& text) {
  return {name, RegistryType::kString, std::string(text.c_str(), std::strlen(text.c_str()) + 1)};
}

std::string DatabaseValueName(std::size_t index) {
  return "Name" + std::to_string(index + 1);
}

std::string& HostProfile() {
  static std::string path;
  return path;
}

}  // namespace

std::string GetRegistryLocation() {
  return platform::GetRegistryLocation();
}

std::unique_ptr<RegistryKey> GetTavoKey(const std::string& subKey, RegistryAccess access) {
  return platform::OpenRegistryKey(kRegistryRoot + subKey, access);
}

std::unique_ptr<RegistryKey> CreateTavoKey(const std::string& subKey, RegistryAccess access) {
  return platform::CreateRegistryKey(kRegistryRoot + subKey, access);
}

int GetTavoValue(const std::string& subKey, const std::string& name, std::string& text,
                 std::size_t maxLength) {
  RegistryValue value;
  if (GetValue(subKey, name, RegistryType::kString, value) == 0) return 0;
  value.data.resize(std::strlen(value.data.c_str()));
  if (value.data.size() > maxLength) return 0;
  text = value.data;
  return 1;
}

int GetTavoValue(const std::string& subKey, const std::string& name, void* buffer,
                 std::uint32_t& size) {
  RegistryValue value;
  if (GetValue(subKey, name, RegistryType::kBinary, value) == 0) return 0;
  const bool fits = value.data.size() <= size;
  size = std::uint32_t(value.data.size());
  if (fits && size != 0) std::memcpy(buffer, value.data.data(), size);
  return fits ? 1 : 0;
}

int GetTavoValue(const std::string& subKey, const std::string& name, std::uint32_t& number) {
  RegistryValue value;
  if (GetValue(subKey, name, RegistryType::kNumber, value) == 0 || value.data.size() != 4) return 0;
  number = 0;
  for (int i = 3; i >= 0; i--) {
    number = number << 8 | static_cast<unsigned char>(value.data[std::size_t(i)]);
  }
  return 1;
}

int SetTavoValue(const std::string& subKey, const std::string& name, const std::string& text) {
  return SetValue(subKey, StringValue(name, text));
}

int SetTavoValue(const std::string& subKey, const std::string& name, std::uint32_t number) {
  std::string data;
  for (int shift = 0; shift < 32; shift += 8) data += char(number >> shift & 0xff);
  return SetValue(subKey, {name, RegistryType::kNumber, data});
}

int SetTavoValue(const std::string& subKey, const std::string& name, const void* buffer,
                 std::uint32_t size) {
  const std::string data = size == 0 ? "" : std::string(static_cast<const char*>(buffer), size);
  return SetValue(subKey, {name, RegistryType::kBinary, data});
}

int DeleteTavoValue(const std::string& subKey, const std::string& name) {
  const auto key = GetTavoKey(subKey, RegistryAccess::kWrite);
  return key ? key->DeleteValue(name) : 0;
}

int DeleteTavoKey(const std::string& subKey, const std::string& child) {
  const auto key = GetTavoKey(subKey, RegistryAccess::kWrite);
  return key ? key->DeleteChild(child) : 0;
}

int EnumValues(const std::string& subKey, std::vector<std::string>& values) {
  const auto key = GetTavoKey(subKey, RegistryAccess::kRead);
  std::vector<RegistryValue> all;
  if (!key || key->GetValues(all) == 0) return 0;
  for (const RegistryValue& value : all) {
    // The name's buffer also holds its NUL.
    if (value.name.size() >= kEnumBuffer || value.data.size() > kEnumBuffer) break;
    values.emplace_back(value.data.c_str());
  }
  return 1;
}

int EnumKeys(const std::string& subKey, std::vector<std::string>& names) {
  const auto key = GetTavoKey(subKey, RegistryAccess::kRead);
  std::vector<std::string> children;
  if (!key || key->GetChildren(children) == 0) return 0;
  std::copy_if(children.begin(), children.end(), std::back_inserter(names),
               [](const std::string& name) { return !name.empty(); });
  return 1;
}

int GetLanguagePath(const std::string& language, std::string& path) {
  return GetTavoValue(kLanguages + language, kPath, path, kMaxPath);
}

int GetTalkingHeadPath(const std::string& filter, std::string& path) {
  return GetTavoValue(kTalkingHeads + filter, kPath, path, kMaxPath);
}

int GetTalkingHeadFilter(const std::string& filter, std::string& filters) {
  return GetTavoValue(kTalkingHeads + filter, "Filters", filters, kMaxFilters);
}

int GetListOfDBNames(std::vector<std::string>& names) {
  const auto key = GetTavoKey(kDatabases, RegistryAccess::kRead);
  std::vector<RegistryValue> all;
  if (!key || key->GetValues(all) == 0) return 0;
  for (std::size_t i = 0; i < all.size(); i++) {
    RegistryValue value;
    if (key->GetValue(DatabaseValueName(i), value) == 0 || value.type != RegistryType::kString)
      return 0;
    names.emplace_back(value.data.c_str());
  }
  return 1;
}

int DeleteListOfDBNames() {
  const auto key = GetTavoKey(kDatabases, RegistryAccess::kReadWrite);
  std::vector<RegistryValue> all;
  if (!key || key->GetValues(all) == 0) return 0;
  int result = 1;
  for (std::size_t i = 0; i < all.size(); i++) {
    if (key->DeleteValue(DatabaseValueName(i)) == 0) result = 0;
  }
  return result;
}

int WriteListOfDBNames(const std::vector<std::string>& names) {
  const auto key = CreateTavoKey(kDatabases, RegistryAccess::kWrite);
  if (!key) return 0;
  for (std::size_t i = 0; i < names.size(); i++) {
    if (key->SetValue(StringValue(DatabaseValueName(i), names[i])) == 0) return 0;
  }
  return 1;
}

int GetDBRoot(std::string& root) {
  if (!GetTavoKey(kDatabases, RegistryAccess::kRead)) return 0;
  const std::string text =
      platform::ReadProfileString(kDatabases, "DBRoot", "", platform::kNoLimit, GetHostProfile());
  if (text.empty()) return 0;
  root = text;
  return 1;
}

void SetHostProfile(const std::string& path) {
  HostProfile() = path;
}

std::string GetHostProfile() {
  if (!HostProfile().empty()) return HostProfile();
  std::string program = platform::GetProgramFileName();
  const std::size_t dot = program.rfind('.');
  const std::size_t slash = program.rfind('\\');
  if (dot != std::string::npos && (slash == std::string::npos || dot > slash)) program.resize(dot);
  return program + ".ini";
}

}  // namespace vemra
