#pragma once

#include "Support/services/dde/DDETopic.h"

namespace vemra {

// The topic "System", by which other programs find out what a server offers. It answers requests
// through its items.
class SUPPORT_API CDDEServerSystemTopic : public CDDETopic {
 public:
  CDDEServerSystemTopic();  // with the items "Topics", "SysItems", "TopicItemList" and "Formats"

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  int Request(std::uint16_t format, const std::string& item, const void*& data,
              std::uint32_t& size) override;
};

}  // namespace vemra
