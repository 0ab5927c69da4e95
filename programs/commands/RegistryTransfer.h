#pragma once

#include <string>
#include <vector>

#include "programs/registry/RegistryFile.h"

namespace vemra::commands {

// Between the store and lists of changes. Keys are below the root of the store, empty for the root
// itself. Each throws CommandError, naming key and store, where the store refuses.

// The key and all below it, each key before its children, as changes that make them anew.
std::vector<RegistryChange> ReadRegistryTree(const std::string& key);

// Makes the changes in their order. Those before one that the store refuses are made.
void ApplyRegistryChanges(const std::vector<RegistryChange>& changes);

// The key and all below it; of the root, all below it and its values. One that is missing is no
// error.
void DeleteRegistryTree(const std::string& key);

// "KEY in STORE", for messages.
std::string RegistryPlace(const std::string& key);

}  // namespace vemra::commands
