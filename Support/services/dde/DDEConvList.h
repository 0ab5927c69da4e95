#pragma once

#include "Support/services/dde/DDEConv.h"
#include "Support/services/dde/DDEList.h"

namespace vemra {

// The open conversations of a server, of each of which it is a holder.
class SUPPORT_API CDDEConvList : public DDEList<CDDEConv, DDEHolder<CDDEConv>> {
 public:
  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  void Add(CDDEConv& conversation) { owners_.emplace_back(&conversation); }
  void Remove(const CDDEConv& conversation);     // which destroys it when nobody else holds it
  CDDEConv* Find(DDEConversation handle) const;  // null when there is none
};

}  // namespace vemra
