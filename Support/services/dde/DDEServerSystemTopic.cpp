#include "Support/services/dde/DDEServerSystemTopic.h"

#include "Support/services/dde/DDEServer.h"
#include "Support/services/dde/DDESystemItem.h"

namespace vemra {

CDDEServerSystemTopic::CDDEServerSystemTopic() : CDDETopic("System") {
  AddItem(std::make_unique<CDDESystemItem_TopicList>("Topics"));
  AddItem(std::make_unique<CDDESystemItem_ItemList>("SysItems"));
  AddItem(std::make_unique<CDDESystemItem_ItemList>("TopicItemList"));
  AddItem(std::make_unique<CDDESystemItem_FormatList>("Formats"));
}

int CDDEServerSystemTopic::Request(std::uint16_t format, const std::string& item, const void*& data,
                                   std::uint32_t& size) {
  if (GetServer() != nullptr) GetServer()->Status("System topic request: %s", item.c_str());
  return CDDETopic::Request(format, item, data, size);
}

}  // namespace vemra
