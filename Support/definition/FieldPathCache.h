#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "Support/definition/FieldList.h"

namespace vemra {

// Remembers which fields an element path, or an attribute there, belongs to. Bounded: it is emptied
// when it holds 4,096 entries or 1 MB of text, and whenever the definitions have changed.
class FieldPathCache {
 public:
  struct Key {
    int fileType;
    bool hasAttribute;
    std::string_view path;
    std::string_view attribute;
  };

  // The fields remembered for the key under this revision of the definitions, or null.
  const CTavoFieldList* Find(const Key& key, std::uint64_t revision);
  void Add(const Key& key, const CTavoFieldList& fields);

 private:
  struct OwnedKey {
    int fileType;
    bool hasAttribute;
    std::size_t pathLength;
    std::string text;  // path and attribute together
    Key View() const;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(const Key& key) const;
    std::size_t operator()(const OwnedKey& key) const { return (*this)(key.View()); }
  };
  struct Equal {
    using is_transparent = void;
    static bool Same(const Key& a, const Key& b);
    bool operator()(const OwnedKey& a, const OwnedKey& b) const { return Same(a.View(), b.View()); }
    bool operator()(const Key& a, const OwnedKey& b) const { return Same(a, b.View()); }
    bool operator()(const OwnedKey& a, const Key& b) const { return Same(a.View(), b); }
  };

  void Clear();

  std::unordered_map<OwnedKey, CTavoFieldList, Hash, Equal> fields_;
  std::size_t textBytes_ = 0;
  std::uint64_t revision_ = 0;
};

}  // namespace vemra
