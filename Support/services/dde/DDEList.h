#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Support/foundation/Position.h"
#include "Support/services/dde/DDEName.h"
#include "Support/services/dde/DDEObject.h"

namespace vemra {

// Objects in the order in which they were added, each kept by an Owner. Pointers are loans until
// the list or the object's owner lets go.
template <typename T, typename Owner>
class DDEList : public DDEObject {
 public:
  int GetCount() const { return static_cast<int>(owners_.size()); }
  POSITION GetHeadPosition() const { return owners_.empty() ? 0 : 1; }
  // The object at the position, which moves on to the next; null at the end. A walk ends when the
  // list changes.
  T* GetNext(POSITION& position) const {
    const POSITION next = std::exchange(position, position < owners_.size() ? position + 1 : 0);
    return next == 0 || next > owners_.size() ? nullptr : &*owners_[next - 1];
  }

 protected:
  std::vector<Owner> owners_;
};

// Objects that are found by their names.
template <typename T>
class DDENamedList : public DDEList<T, std::unique_ptr<T>> {
 public:
  // 0, and the object is destroyed, when it has no name or one that is there already.
  int Add(std::unique_ptr<T> object) {
    if (object == nullptr || object->GetName().empty() || Find(object->GetName()) != nullptr)
      return 0;
    this->owners_.push_back(std::move(object));
    return 1;
  }
  // Without regard to ASCII case; null when there is none.
  T* Find(const std::string& name) const {
    for (const auto& owner : this->owners_) {
      if (IsSameDDEName(owner->GetName(), name)) return owner.get();
    }
    return nullptr;
  }
};

}  // namespace vemra
