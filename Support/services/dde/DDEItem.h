#pragma once

#include <cstdint>
#include <string>

#include "Support/services/dde/DDEFormat.h"
#include "Support/services/dde/DDEObject.h"

namespace vemra {

class CDDETopic;

// A named item of a topic: what it says of itself, in which formats, and whether it can be set. A
// program derives its items from this class. An operation that returns 0 leaves the transaction to
// the server's operation of the same name.
class SUPPORT_API CDDEItem : public DDEObject {
 public:
  CDDEItem() = default;  // without a name
  explicit CDDEItem(const std::string& name) { Create(name); }

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  // Names it. 0 when the name is empty, longer than 255 characters or holds a NUL, and when the
  // item belongs to a topic.
  int Create(const std::string& name);
  const std::string& GetName() const { return name_; }
  CDDETopic* GetTopic() const { return topic_; }  // null while it belongs to none

  // The formats in which it can be had, set and watched, ended by a 0; none here.
  virtual const std::uint16_t* GetFormatList() const;
  int IsSupportedFormat(std::uint16_t format) const;

  // Gives its data in the format: size bytes at data, which stay as they are until the item is
  // asked or changed again. Here always 0.
  virtual int Request(std::uint16_t format, const void*& data, std::uint32_t& size);
  // Takes size bytes that another program sent: what they hold must be checked, and so must that
  // they are there, for size may be 0 and then data is not to be read. Those who watch the item are
  // told after it. Here always 0.
  virtual int Poke(std::uint16_t format, const void* data, std::uint32_t size);
  // Whether it may be watched in the format; here, whether the format is supported.
  virtual int CanAdvise(std::uint16_t format);

  // Tells those who watch the item that it has changed: each is sent what Request gives. 0 when it
  // does not belong to a topic of the created server.
  int PostAdvise();

 private:
  friend class CDDETopic;

  std::string name_;
  CDDETopic* topic_ = nullptr;
};

}  // namespace vemra
