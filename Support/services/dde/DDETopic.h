#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Support/services/dde/DDEItemList.h"

namespace vemra {

class CDDEServer;

// A named topic of the server, with its items. Its operations ask the item of the name, and where
// that is missing or returns 0, the server's operation of the same name; their arguments and
// results are those of CDDEItem. A program derives from this class for topics that execute
// commands or whose items are not objects.
class SUPPORT_API CDDETopic : public DDEObject {
 public:
  CDDETopic() = default;  // without a name
  explicit CDDETopic(const std::string& name) { Create(name); }

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  // Names it. 0 when the name is empty, longer than 255 characters or holds a NUL, and when the
  // topic belongs to a server.
  int Create(const std::string& name);
  const std::string& GetName() const { return name_; }
  CDDEServer* GetServer() const { return server_; }  // null while it belongs to none
  const CDDEItemList& GetItems() const { return items_; }

  // 0, and the item is destroyed, when it has no name or one that the topic has already.
  int AddItem(std::unique_ptr<CDDEItem> item);
  CDDEItem* FindItem(const std::string& name) const;  // null when there is none

  virtual int Request(std::uint16_t format, const std::string& item, const void*& data,
                      std::uint32_t& size);
  virtual int Poke(std::uint16_t format, const std::string& item, const void* data,
                   std::uint32_t size);
  // A command of size bytes that another program sent, mostly a text that ends with a NUL.
  virtual int Exec(const void* data, std::uint32_t size);
  virtual int CanAdvise(std::uint16_t format, const std::string& item);

  // Tells those who watch the item that it has changed. 0 when the topic does not belong to the
  // created server.
  int PostAdvise(const std::string& item);

 private:
  friend class CDDEServer;

  std::string name_;
  CDDEServer* server_ = nullptr;
  CDDEItemList items_;
};

}  // namespace vemra
