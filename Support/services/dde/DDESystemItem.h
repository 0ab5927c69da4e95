#pragma once

#include "Support/services/dde/DDEItem.h"

namespace vemra {

// An item that answers requests with a text made for each, as TEXT. Parts of a list are separated
// by a tab. The system topic's items are of these classes; other topics may have them too.
class SUPPORT_API CDDESystemItem : public CDDEItem {
 public:
  using CDDEItem::CDDEItem;

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  const std::uint16_t* GetFormatList() const override;  // TEXT
  int Request(std::uint16_t format, const void*& data, std::uint32_t& size) override;
  int CanAdvise(std::uint16_t format) override;  // 0: nobody announces its changes

 protected:
  virtual std::string MakeAnswer() const;  // empty here

 private:
  std::string answer_;
};

// The names of all topics of the server.
class SUPPORT_API CDDESystemItem_TopicList : public CDDESystemItem {
 public:
  using CDDESystemItem::CDDESystemItem;

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

 protected:
  std::string MakeAnswer() const override;
};

// The names of the items of its topic: the answer of both "SysItems" and "TopicItemList".
class SUPPORT_API CDDESystemItem_ItemList : public CDDESystemItem {
 public:
  using CDDESystemItem::CDDESystemItem;

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

 protected:
  std::string MakeAnswer() const override;
};

// The names of the formats that the items of its topic support, each once, in the order first met.
// A format without a name is an empty part.
class SUPPORT_API CDDESystemItem_FormatList : public CDDESystemItem {
 public:
  using CDDESystemItem::CDDESystemItem;

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

 protected:
  std::string MakeAnswer() const override;
};

}  // namespace vemra
