#include "Support/services/dde/DDEObject.h"

#include "Support/services/dde/DDEServer.h"
#include "Support/services/dde/DDEServerSystemTopic.h"
#include "Support/services/dde/DDEStringItem.h"
#include "Support/services/dde/DDESystemItem.h"
#include "Support/services/dde/HSZ.h"

namespace vemra {
namespace {

template <typename T>
std::unique_ptr<DDEObject> Create() {
  return std::make_unique<T>();
}

}  // namespace

const DDEClass& DDEObject::Class() {
  static constexpr DDEClass kClass{"DDEObject", nullptr, Create<DDEObject>};
  return kClass;
}

// What a class tells of itself.
#define VEMRA_DDE_CLASS(type, base)                                           \
  const DDEClass& type::Class() {                                             \
    static const DDEClass kClass{#type, &base::Class(), vemra::Create<type>}; \
    return kClass;                                                            \
  }

VEMRA_DDE_CLASS(CDDECountedObject, DDEObject)
VEMRA_DDE_CLASS(CHSZ, DDEObject)
VEMRA_DDE_CLASS(CDDEServer, DDEObject)
VEMRA_DDE_CLASS(CDDETopic, DDEObject)
VEMRA_DDE_CLASS(CDDETopicList, DDEObject)
VEMRA_DDE_CLASS(CDDEItemList, DDEObject)
VEMRA_DDE_CLASS(CDDEConvList, DDEObject)
VEMRA_DDE_CLASS(CDDEItem, DDEObject)
VEMRA_DDE_CLASS(CDDEStringItem, CDDEItem)
VEMRA_DDE_CLASS(CDDESystemItem, CDDEItem)
VEMRA_DDE_CLASS(CDDESystemItem_TopicList, CDDESystemItem)
VEMRA_DDE_CLASS(CDDESystemItem_ItemList, CDDESystemItem)
VEMRA_DDE_CLASS(CDDESystemItem_FormatList, CDDESystemItem)
VEMRA_DDE_CLASS(CDDEServerSystemTopic, CDDETopic)
VEMRA_DDE_CLASS(CDDEConv, CDDECountedObject)

#undef VEMRA_DDE_CLASS

int DDEObject::IsKindOf(const DDEClass& base) const {
  for (const DDEClass* other = &GetRuntimeClass(); other != nullptr; other = other->base) {
    if (other == &base) return 1;
  }
  return 0;
}

std::unique_ptr<DDEObject> CreateDDEObject(const std::string& className) {
  const DDEClass* const classes[] = {&DDEObject::Class(),
                                     &CDDECountedObject::Class(),
                                     &CHSZ::Class(),
                                     &CDDEServer::Class(),
                                     &CDDETopic::Class(),
                                     &CDDETopicList::Class(),
                                     &CDDEItemList::Class(),
                                     &CDDEConvList::Class(),
                                     &CDDEItem::Class(),
                                     &CDDEStringItem::Class(),
                                     &CDDESystemItem::Class(),
                                     &CDDESystemItem_TopicList::Class(),
                                     &CDDESystemItem_ItemList::Class(),
                                     &CDDESystemItem_FormatList::Class(),
                                     &CDDEServerSystemTopic::Class(),
                                     &CDDEConv::Class()};
  for (const DDEClass* const known : classes) {
    if (className == known->name) return known->create();
  }
  return nullptr;
}

}  // namespace vemra
