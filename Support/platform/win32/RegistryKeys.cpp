#include "Support/platform/RegistryKeys.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace vemra::platform {

namespace {

constexpr DWORD kMaxNameLength = 16383;  // characters, of a value's name; a key's has up to 255

REGSAM Rights(RegistryAccess access) {
  switch (access) {
    case RegistryAccess::kRead:
      return KEY_READ;
    case RegistryAccess::kWrite:
      return KEY_WRITE;
    case RegistryAccess::kReadWrite:
      break;
  }
  return KEY_READ | KEY_WRITE;
}

class SystemKey : public RegistryKey {
 public:
  explicit SystemKey(HKEY key) : key_(key) {}
  SystemKey(const SystemKey&) = delete;
  SystemKey& operator=(const SystemKey&) = delete;
  ~SystemKey() override { RegCloseKey(key_); }

  int GetValue(const std::string& name, RegistryValue& value) const override {
    std::string data(256, '\0');
    for (;;) {
      DWORD type = 0;
      auto size = DWORD(data.size());
      const LSTATUS result = RegQueryValueExA(key_, name.c_str(), nullptr, &type,
                                              reinterpret_cast<BYTE*>(data.data()), &size);
      if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return 0;
      data.resize(size);
      if (result == ERROR_MORE_DATA) continue;
      value = {name, static_cast<RegistryType>(type), data};
      return 1;
    }
  }

  int GetValues(std::vector<RegistryValue>& values) const override {
    std::vector<RegistryValue> read;
    std::string name(kMaxNameLength + 1, '\0');
    for (DWORD i = 0;; i++) {
      auto length = DWORD(name.size());
      const LSTATUS result =
          RegEnumValueA(key_, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
      if (result == ERROR_NO_MORE_ITEMS) break;
      if (result != ERROR_SUCCESS) return 0;
      RegistryValue value;
      // One that was deleted meanwhile is not there.
      if (GetValue(name.substr(0, length), value) != 0) read.push_back(std::move(value));
    }
    values = std::move(read);
    return 1;
  }

  int GetChildren(std::vector<std::string>& names) const override {
    std::vector<std::string> read;
    for (DWORD i = 0;; i++) {
      char name[256];
      DWORD length = sizeof name;
      const LSTATUS result =
          RegEnumKeyExA(key_, i, name, &length, nullptr, nullptr, nullptr, nullptr);
      if (result == ERROR_NO_MORE_ITEMS) break;
      if (result != ERROR_SUCCESS) return 0;
      read.emplace_back(name, length);
    }
    std::sort(read.begin(), read.end(), [](const std::string& a, const std::string& b) {
      return _stricmp(a.c_str(), b.c_str()) < 0;
    });
    names = std::move(read);
    return 1;
  }

  int SetValue(const RegistryValue& value) override {
    return RegSetValueExA(key_, value.name.c_str(), 0, DWORD(value.type),
                          reinterpret_cast<const BYTE*>(value.data.data()),
                          DWORD(value.data.size())) == ERROR_SUCCESS;
  }

  int DeleteValue(const std::string& name) override {
    return RegDeleteValueA(key_, name.c_str()) == ERROR_SUCCESS;
  }

  int DeleteChild(const std::string& name) override {
    return !name.empty() && RegDeleteKeyA(key_, name.c_str()) == ERROR_SUCCESS;
  }

 private:
  HKEY key_;
};

}  // namespace

std::unique_ptr<RegistryKey> OpenRegistryKey(const std::string& path, RegistryAccess access) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, Rights(access), &key) != ERROR_SUCCESS)
    return nullptr;
  return std::make_unique<SystemKey>(key);
}

std::unique_ptr<RegistryKey> CreateRegistryKey(const std::string& path, RegistryAccess access) {
  HKEY key = nullptr;
  if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                      Rights(access), nullptr, &key, nullptr) != ERROR_SUCCESS)
    return nullptr;
  return std::make_unique<SystemKey>(key);
}

int ReadRegistryValue(const std::string& path, const std::string& name, RegistryValue& value) {
  const auto key = OpenRegistryKey(path, RegistryAccess::kRead);
  return key ? key->GetValue(name, value) : 0;
}

std::string GetRegistryLocation() {
  return "HKEY_LOCAL_MACHINE";
}

void RedirectRegistry(const std::filesystem::path& folder) {
  static std::string redirected;
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  if (!redirected.empty()) RegDeleteTreeA(HKEY_CURRENT_USER, redirected.c_str());
  redirected = folder.empty() ? "" : "SOFTWARE\\" + folder.filename().string();
  HKEY key = nullptr;
  if (redirected.empty() || RegCreateKeyA(HKEY_CURRENT_USER, redirected.c_str(), &key) != 0) return;
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, key);
  RegCloseKey(key);
}

}  // namespace vemra::platform
