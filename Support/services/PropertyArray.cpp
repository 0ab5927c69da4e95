#include "Support/services/PropertyArray.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace vemra {

TavoPropertyArray::TavoPropertyArray() = default;

TavoPropertyArray::TavoPropertyArray(const TavoPropertyArray& other) {
  Copy(other);
}

TavoPropertyArray& TavoPropertyArray::operator=(const TavoPropertyArray& other) {
  Copy(other);
  return *this;
}

TavoPropertyArray::~TavoPropertyArray() = default;

int TavoPropertyArray::Add(const TavoProperty& property) {
  const int before = GetSize();
  Insert(std::make_unique<TavoProperty>(InGroup(property)));
  return GetSize() > before ? 1 : 0;
}

void TavoPropertyArray::Insert(std::unique_ptr<TavoProperty> property) {
  TavoProperty* const added = property.get();
  const auto place = std::upper_bound(
      byOrder_.begin(), byOrder_.end(), added->GetOrder(),
      [](std::uint32_t order, const auto& entry) { return order < entry->GetOrder(); });
  byOrder_.insert(place, std::move(property));
  if (FindEqual(*added) == sorted_.end()) sorted_.insert(LowerBound(*added), added);
}

TavoPropertyArray::Sorted::const_iterator TavoPropertyArray::LowerBound(
    const TavoProperty& property) const {
  return std::lower_bound(
      sorted_.begin(), sorted_.end(), property,
      [](const TavoProperty* entry, const TavoProperty& key) { return *entry < key; });
}

TavoPropertyArray::Sorted::const_iterator TavoPropertyArray::FindEqual(
    const TavoProperty& property) const {
  const auto found = LowerBound(property);
  return found != sorted_.end() && **found == property ? found : sorted_.end();
}

TavoProperty TavoPropertyArray::InGroup(const TavoProperty& property) const {
  TavoProperty result(property);
  if (broad_) result.SetGroup(broadGroup_);
  return result;
}

int TavoPropertyArray::Replace(const TavoProperty& property) {
  const TavoProperty replacement = InGroup(property);
  const auto found = FindEqual(replacement);
  if (found == sorted_.end()) return 0;
  **found = replacement;
  return 1;
}

int TavoPropertyArray::Remove(const TavoProperty& property) {
  const auto found = FindEqual(InGroup(property));
  if (found == sorted_.end()) return 0;
  const TavoProperty* const removed = *found;
  sorted_.erase(found);
  std::erase_if(byOrder_, [removed](const auto& entry) { return entry.get() == removed; });
  return 1;
}

void TavoPropertyArray::RemoveAll() {
  sorted_.clear();
  byOrder_.clear();
}

TavoProperty* TavoPropertyArray::GetAt(int index) const {
  return index >= 0 && index < GetSize() ? sorted_[static_cast<std::size_t>(index)] : nullptr;
}

TavoProperty* TavoPropertyArray::GetAt(std::uint32_t order) const {
  const auto found = std::lower_bound(
      byOrder_.begin(), byOrder_.end(), order,
      [](const auto& entry, std::uint32_t key) { return entry->GetOrder() < key; });
  return found != byOrder_.end() && (*found)->GetOrder() == order ? found->get() : nullptr;
}

TavoProperty* TavoPropertyArray::GetAt(std::uint32_t group, std::uint32_t order) const {
  TavoProperty key;
  key.SetGroup(group);
  key.SetOrder(order);
  return GetAt(Find(key));
}

TavoProperty* TavoPropertyArray::GetAt(std::uint32_t group, int index) const {
  TavoProperty firstOfGroup;
  firstOfGroup.SetGroup(group);
  const auto first = LowerBound(firstOfGroup);
  if (index < 0 || index >= std::distance(first, sorted_.end())) return nullptr;
  TavoProperty* const found = *(first + index);
  return found->GetGroup() == group ? found : nullptr;
}

TavoProperty* TavoPropertyArray::GetByName(const std::string& name) const {
  const auto found =
      std::find_if(sorted_.begin(), sorted_.end(),
                   [&name](const TavoProperty* entry) { return entry->GetName() == name; });
  return found != sorted_.end() ? *found : nullptr;
}

int TavoPropertyArray::Find(const TavoProperty& property) const {
  const auto found = FindEqual(property);
  return found != sorted_.end() ? static_cast<int>(found - sorted_.begin()) : -1;
}

void TavoPropertyArray::Copy(const TavoPropertyArray& other) {
  if (this == &other) return;
  RemoveAll();
  std::unordered_map<const TavoProperty*, TavoProperty*> copies;
  for (const auto& property : other.byOrder_) {
    byOrder_.push_back(std::make_unique<TavoProperty>(*property));
    copies[property.get()] = byOrder_.back().get();
  }
  for (const TavoProperty* property : other.sorted_) sorted_.push_back(copies.at(property));
  id_ = other.id_ != nullptr ? std::make_unique<TavoProperty>(*other.id_) : nullptr;
  broad_ = other.broad_;
  broadGroup_ = other.broadGroup_;
}

void TavoPropertyArray::SetBroadType(std::uint32_t group) {
  broad_ = true;
  broadGroup_ = group;
  sorted_.clear();
  for (auto& property : std::exchange(byOrder_, {})) {
    property->SetGroup(group);
    Insert(std::move(property));
  }
}

}  // namespace vemra
