#pragma once

#include "Support/services/dde/DDEList.h"
#include "Support/services/dde/DDETopic.h"

namespace vemra {

// The topics of a server.
class SUPPORT_API CDDETopicList : public DDENamedList<CDDETopic> {
 public:
  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }
};

}  // namespace vemra
