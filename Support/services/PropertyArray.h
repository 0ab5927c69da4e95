#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Support/Export.h"
#include "Support/services/Property.h"

namespace vemra {

// The properties of a component. It keeps two orders of them: the order list, by order alone, and
// the sorted list, by group and order, in which each pair of keys stands once. Indexes (signed) and
// names see the sorted list. Pointers to properties are loans until the property is removed; change
// a property's keys only by removing and adding it. Used by one thread at a time.
class SUPPORT_API TavoPropertyArray {
 public:
  TavoPropertyArray();
  TavoPropertyArray(const TavoPropertyArray& other);
  TavoPropertyArray& operator=(const TavoPropertyArray& other);
  virtual ~TavoPropertyArray();

  // Adds a copy. Kept: when the sorted list has a property with the same group and order, the
  // result is 0 and only the order list takes the new one.
  int Add(const TavoProperty& property);
  // Overwrites the property with the same group and order; 0 when there is none.
  int Replace(const TavoProperty& property);
  // Removes the property with the same group and order from both lists; 0 when there is none.
  int Remove(const TavoProperty& property);
  void RemoveAll();  // keeps the identifying property and the broad group

  int GetSize() const { return static_cast<int>(sorted_.size()); }
  // Null when there is none. The first of the order list with the order; the property with the
  // group and order; the index-th property of the group.
  TavoProperty* GetAt(int index) const;
  TavoProperty* GetAt(std::uint32_t order) const;
  TavoProperty* GetAt(std::uint32_t group, std::uint32_t order) const;
  TavoProperty* GetAt(std::uint32_t group, int index) const;
  TavoProperty* GetByName(const std::string& name) const;  // the first with exactly this name
  int Find(const TavoProperty& property) const;  // index of the same group and order, or -1

  // Makes this a copy of other, with its identifying property and broad group.
  void Copy(const TavoPropertyArray& other);
  // A property that tells whose array this is; the earlier one is destroyed.
  void SetID(std::unique_ptr<TavoProperty> id) { id_ = std::move(id); }
  const TavoProperty* GetID() const { return id_.get(); }
  // Puts every property, here or added later, into this one group, so that the sorted list goes by
  // order alone. Of properties that then have the same order, the first in the order list stays in
  // the sorted list.
  void SetBroadType(std::uint32_t group);

 private:
  using Sorted = std::vector<TavoProperty*>;

  void Insert(std::unique_ptr<TavoProperty> property);
  // The first entry of the sorted list that is not less than the property.
  Sorted::const_iterator LowerBound(const TavoProperty& property) const;
  Sorted::const_iterator FindEqual(const TavoProperty& property) const;
  TavoProperty InGroup(const TavoProperty& property) const;

  std::vector<std::unique_ptr<TavoProperty>> byOrder_;
  Sorted sorted_;  // into byOrder_
  std::unique_ptr<TavoProperty> id_;
  bool broad_ = false;
  std::uint32_t broadGroup_ = 0;
};

}  // namespace vemra
