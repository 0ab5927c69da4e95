#include "Support/services/dde/DDEConvList.h"

#include <algorithm>

namespace vemra {

void CDDEConvList::Remove(const CDDEConv& conversation) {
  std::erase_if(owners_, [&](const auto& owner) { return owner.Get() == &conversation; });
}

CDDEConv* CDDEConvList::Find(DDEConversation handle) const {
  const auto found = std::find_if(owners_.begin(), owners_.end(), [handle](const auto& owner) {
    return owner->GetHandle() == handle;
  });
  return found == owners_.end() ? nullptr : found->Get();
}

}  // namespace vemra
