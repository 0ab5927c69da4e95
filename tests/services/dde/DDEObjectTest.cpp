#include "Support/services/dde/DDEObject.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "Support/services/Services.h"

namespace vemra {
namespace {

template <typename T>
bool Is(const DDEObject& object) {
  return typeid(object) == typeid(T);
}

TEST(DDEObjectTest, EveryClassCanBeCreatedByItsName) {
  const struct {
    const char* name;
    bool (*is)(const DDEObject&);
    const char* base;
  } kRows[] = {{"CDDECountedObject", Is<CDDECountedObject>, "DDEObject"},
               {"CHSZ", Is<CHSZ>, "DDEObject"},
               {"CDDEServer", Is<CDDEServer>, "DDEObject"},
               {"CDDETopic", Is<CDDETopic>, "DDEObject"},
               {"CDDETopicList", Is<CDDETopicList>, "DDEObject"},
               {"CDDEItemList", Is<CDDEItemList>, "DDEObject"},
               {"CDDEConvList", Is<CDDEConvList>, "DDEObject"},
               {"CDDEItem", Is<CDDEItem>, "DDEObject"},
               {"CDDEStringItem", Is<CDDEStringItem>, "CDDEItem"},
               {"CDDESystemItem", Is<CDDESystemItem>, "CDDEItem"},
               {"CDDESystemItem_TopicList", Is<CDDESystemItem_TopicList>, "CDDESystemItem"},
               {"CDDESystemItem_ItemList", Is<CDDESystemItem_ItemList>, "CDDESystemItem"},
               {"CDDESystemItem_FormatList", Is<CDDESystemItem_FormatList>, "CDDESystemItem"},
               {"CDDEServerSystemTopic", Is<CDDEServerSystemTopic>, "CDDETopic"},
               {"CDDEConv", Is<CDDEConv>, "CDDECountedObject"}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    const std::unique_ptr<DDEObject> object = CreateDDEObject(row.name);
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(row.is(*object));
    EXPECT_STREQ(object->GetRuntimeClass().name, row.name);
    EXPECT_STREQ(object->GetRuntimeClass().base->name, row.base);
    EXPECT_EQ(object->IsKindOf(DDEObject::Class()), 1);
    EXPECT_EQ(object->IsKindOf(CDDEItem::Class()),
              dynamic_cast<CDDEItem*>(object.get()) == nullptr ? 0 : 1);
  }
  EXPECT_EQ(CreateDDEObject("cddeserver"), nullptr);
  EXPECT_EQ(CreateDDEObject(""), nullptr);
}

TEST(DDEObjectTest, TheLastHolderDestroysACountedObject) {
  struct Counted : CDDECountedObject {
    explicit Counted(int* alive) : alive_(alive) { ++*alive_; }
    ~Counted() override { --*alive_; }
    int* alive_;
  };
  int alive = 0;
  auto* const object = new Counted(&alive);
  EXPECT_EQ(object->AddRef(), 1);
  {
    DDEHolder<Counted> first(object);
    const DDEHolder<Counted> second = first;
    first = DDEHolder<Counted>(new Counted(&alive));
    EXPECT_EQ(alive, 2);
    EXPECT_EQ(object->AddRef(), 3);
    EXPECT_EQ(object->Release(), 2);
  }
  EXPECT_EQ(alive, 1);
  EXPECT_EQ(object->Release(), 0);
  EXPECT_EQ(alive, 0);
}

}  // namespace
}  // namespace vemra
