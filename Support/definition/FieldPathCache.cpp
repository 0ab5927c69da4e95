#include "Support/definition/FieldPathCache.h"

#include <functional>
#include <utility>

namespace vemra {
namespace {

constexpr std::size_t kMaxEntries = 4096;
constexpr std::size_t kMaxTextBytes = 1 << 20;

}  // namespace

FieldPathCache::Key FieldPathCache::OwnedKey::View() const {
  const std::string_view all = text;
  return {fileType, hasAttribute, all.substr(0, pathLength), all.substr(pathLength)};
}

std::size_t FieldPathCache::Hash::operator()(const Key& key) const {
  const std::hash<std::string_view> hash;
  std::size_t value = hash(key.path) + static_cast<std::size_t>(key.fileType) * 31;
  if (key.hasAttribute) value = value * 31 + hash(key.attribute) + 1;
  return value;
}

bool FieldPathCache::Equal::Same(const Key& a, const Key& b) {
  return a.fileType == b.fileType && a.hasAttribute == b.hasAttribute && a.path == b.path &&
         a.attribute == b.attribute;
}

const CTavoFieldList* FieldPathCache::Find(const Key& key, std::uint64_t revision) {
  if (revision != revision_) {
    Clear();
    revision_ = revision;
  }
  const auto found = fields_.find(key);
  return found == fields_.end() ? nullptr : &found->second;
}

void FieldPathCache::Add(const Key& key, const CTavoFieldList& fields) {
  const std::size_t bytes = key.path.size() + key.attribute.size();
  if (bytes > kMaxTextBytes) return;
  if (fields_.size() >= kMaxEntries || textBytes_ + bytes > kMaxTextBytes) Clear();
  OwnedKey owned{key.fileType, key.hasAttribute, key.path.size(), std::string(key.path)};
  owned.text += key.attribute;
  fields_.emplace(std::move(owned), fields);
  textBytes_ += bytes;
}

void FieldPathCache::Clear() {
  fields_.clear();
  textBytes_ = 0;
}

}  // namespace vemra
