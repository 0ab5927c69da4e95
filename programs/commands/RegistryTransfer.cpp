#include "programs/commands/RegistryTransfer.h"

#include <utility>

#include "Support/foundation/Registry.h"
#include "programs/commands/CommandError.h"

namespace vemra::commands {
namespace {

std::string ChildOf(const std::string& key, const std::string& child) {
  return key.empty() ? child : key + '\\' + child;
}

void ReadTree(const std::string& key, std::vector<RegistryChange>& changes) {
  const auto open = GetTavoKey(key, RegistryAccess::kRead);
  std::vector<RegistryValue> values;
  std::vector<std::string> children;
  if (!open || open->GetValues(values) == 0 || open->GetChildren(children) == 0)
    throw CommandError(RegistryPlace(key) + " cannot be read");
  RegistryChange change{key, false, {}};
  for (RegistryValue& value : values) change.values.push_back({std::move(value), false});
  changes.push_back(std::move(change));
  for (const std::string& child : children) ReadTree(ChildOf(key, child), changes);
}

// Whether the value is gone, be it that it was not there.
bool IsDeleted(RegistryKey& key, const std::string& name) {
  RegistryValue value;
  return key.DeleteValue(name) != 0 || key.GetValue(name, value) == 0;
}

void ApplyChange(const RegistryChange& change) {
  const auto key = CreateTavoKey(change.key, RegistryAccess::kReadWrite);
  if (!key) throw CommandError(RegistryPlace(change.key) + " cannot be written");
  for (const RegistryValueChange& item : change.values) {
    const bool done =
        item.isDeleted ? IsDeleted(*key, item.value.name) : key->SetValue(item.value) != 0;
    if (!done) {
      throw CommandError("the value \"" + item.value.name + "\" of " + RegistryPlace(change.key) +
                         " cannot be written");
    }
  }
}

}  // namespace

std::vector<RegistryChange> ReadRegistryTree(const std::string& key) {
  std::vector<RegistryChange> changes;
  ReadTree(key, changes);
  return changes;
}

void ApplyRegistryChanges(const std::vector<RegistryChange>& changes) {
  for (const RegistryChange& change : changes) {
    if (change.isDeleted) {
      DeleteRegistryTree(change.key);
    } else {
      ApplyChange(change);
    }
  }
}

void DeleteRegistryTree(const std::string& key) {
  const auto open = GetTavoKey(key, RegistryAccess::kReadWrite);
  if (!open) return;
  std::vector<std::string> children;
  std::vector<RegistryValue> values;
  bool done = open->GetChildren(children) != 0 && open->GetValues(values) != 0;
  for (const std::string& child : children) DeleteRegistryTree(ChildOf(key, child));
  for (const RegistryValue& value : values) done = open->DeleteValue(value.name) != 0 && done;
  const std::size_t slash = key.rfind('\\');
  if (slash != std::string::npos) {
    done = DeleteTavoKey(key.substr(0, slash), key.substr(slash + 1)) != 0 && done;
  } else if (!key.empty()) {
    done = DeleteTavoKey("", key) != 0 && done;
  }
  if (!done) throw CommandError(RegistryPlace(key) + " cannot be deleted");
}

std::string RegistryPlace(const std::string& key) {
  const std::string root(kRegistryRoot, sizeof kRegistryRoot - 2);
  return (key.empty() ? root : ChildOf(root, key)) + " in " + GetRegistryLocation();
}

}  // namespace vemra::commands
