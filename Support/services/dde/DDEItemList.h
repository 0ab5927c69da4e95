#pragma once

#include "Support/services/dde/DDEItem.h"
#include "Support/services/dde/DDEList.h"

namespace vemra {

// The items of a topic.
class SUPPORT_API CDDEItemList : public DDENamedList<CDDEItem> {
 public:
  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }
};

}  // namespace vemra
