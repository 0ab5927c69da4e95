#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Support/Export.h"

namespace vemra {

enum class RegistryAccess { kRead, kWrite, kReadWrite };

// The numbers are the system's own.
enum class RegistryType : std::uint32_t {
  kString = 1,  // data ends with a NUL
  kBinary = 3,
  kNumber = 4,  // 32 bits, little-endian
};

struct RegistryValue {
  std::string name;
  RegistryType type = RegistryType::kString;
  std::string data;  // the stored bytes
};

// An open key of the registry store, closed when it is destroyed. Names are found without regard to
// ASCII case. Every operation gives 1, or 0 when it fails, the key was deleted meanwhile, or the
// access that the key was opened with does not allow it. Used by one thread at a time.
class SUPPORT_API RegistryKey {
 public:
  virtual ~RegistryKey() = default;

  virtual int GetValue(const std::string& name, RegistryValue& value) const = 0;
  // All values in registry order: that in which they were first set. (Windows itself keeps that
  // order; Wine lists them by name.)
  virtual int GetValues(std::vector<RegistryValue>& values) const = 0;
  // The names of the child keys, sorted.
  virtual int GetChildren(std::vector<std::string>& names) const = 0;
  // Needs write access, as do the next two.
  virtual int SetValue(const RegistryValue& value) = 0;
  virtual int DeleteValue(const std::string& name) = 0;
  // Fails for an empty name and for a child that has children of its own.
  virtual int DeleteChild(const std::string& name) = 0;

 protected:
  RegistryKey() = default;
  RegistryKey(const RegistryKey&) = default;
  RegistryKey& operator=(const RegistryKey&) = default;
};

}  // namespace vemra
