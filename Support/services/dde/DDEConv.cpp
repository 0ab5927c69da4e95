#include "Support/services/dde/DDEConv.h"

#include <limits>

#include "Support/platform/Dde.h"
#include "Support/services/dde/DDEDataView.h"
#include "Support/services/dde/DDEFormat.h"
#include "Support/services/dde/DDEServer.h"
#include "Support/services/dde/DDEText.h"
#include "Support/services/dde/HSZ.h"

namespace vemra {

int CDDEConv::ConnectTo(const std::string& service, const std::string& topic) {
  CDDEServer* const server = CDDEServer::GetServer();
  if (server == nullptr || server->GetInstance() == 0 || handle_ != DDEConversation::kNone)
    return 0;
  const CHSZ serviceHandle(*server, service);
  const CHSZ topicHandle(*server, topic);
  // A null handle would mean any service or topic.
  const bool named = serviceHandle != DDEString::kNone && topicHandle != DDEString::kNone;
  const DDEConversation handle =
      named ? platform::GetDdeManager().Connect(server->GetInstance(), serviceHandle, topicHandle)
            : DDEConversation::kNone;
  if (handle == DDEConversation::kNone) {
    server->Status("Failed to connect to %s|%s. Error %u", service.c_str(), topic.c_str(),
                   server->GetLastError());
    return 0;
  }
  handle_ = handle;
  topic_ = topic;
  server->AddConversation(*this);
  return 1;
}

int CDDEConv::Terminate() {
  if (handle_ == DDEConversation::kNone) return 0;
  const DDEHolder<CDDEConv> self(this);
  const bool ended = platform::GetDdeManager().Disconnect(handle_);
  CDDEServer::GetServer()->RemoveConversation(handle_);
  return ended ? 1 : 0;
}

DDEData CDDEConv::Transact(DDETransaction type, std::uint16_t format, const std::string& item,
                           const void* bytes, std::uint32_t size) {
  if (handle_ == DDEConversation::kNone) return DDEData::kNone;
  const DDEHolder<CDDEConv> self(this);  // it may end meanwhile
  const CHSZ itemHandle(*CDDEServer::GetServer(), item);
  return platform::GetDdeManager().ClientTransaction(bytes, size, handle_, itemHandle, format, type,
                                                     timeout_);
}

int CDDEConv::Request(std::uint16_t format, const std::string& item, std::string& data) {
  const DDEData answer = Transact(kDDERequest, format, item, nullptr, 0);
  if (answer == DDEData::kNone) return 0;
  int result = 0;
  {
    const DDEDataView view(answer);
    if (view.IsValid()) {
      data.assign(static_cast<const char*>(view.GetBytes()), view.GetSize());
      result = 1;
    }
  }
  platform::GetDdeManager().FreeDataHandle(answer);
  return result;
}

int CDDEConv::Request(const std::string& item, std::string& text) {
  std::string data;
  if (Request(kDDEFormatText, item, data) == 0) return 0;
  text = GetDDEText(data.data(), data.size());
  return 1;
}

int CDDEConv::Poke(std::uint16_t format, const std::string& item, const void* data,
                   std::uint32_t size) {
  return Transact(kDDEPoke, format, item, data, size) == DDEData::kNone ? 0 : 1;
}

int CDDEConv::Poke(const std::string& item, const std::string& text) {
  if (text.size() >= std::numeric_limits<std::uint32_t>::max()) return 0;
  return Poke(kDDEFormatText, item, text.c_str(), static_cast<std::uint32_t>(text.size() + 1));
}

int CDDEConv::Exec(const std::string& command) {
  if (command.size() >= std::numeric_limits<std::uint32_t>::max()) return 0;
  const auto size = static_cast<std::uint32_t>(command.size() + 1);
  return Transact(kDDEExecute, 0, {}, command.c_str(), size) == DDEData::kNone ? 0 : 1;
}

int CDDEConv::Advise(std::uint16_t format, const std::string& item) {
  return Transact(kDDEAdviseStart, format, item, nullptr, 0) == DDEData::kNone ? 0 : 1;
}

int CDDEConv::StopAdvise(std::uint16_t format, const std::string& item) {
  return Transact(kDDEAdviseStop, format, item, nullptr, 0) == DDEData::kNone ? 0 : 1;
}

int CDDEConv::AdviseData(std::uint16_t format, const std::string& topic, const std::string& item,
                         const void* data, std::uint32_t size) {
  CDDEServer* const server = CDDEServer::GetServer();
  return server == nullptr ? 0 : server->AdviseData(format, handle_, topic, item, data, size);
}

}  // namespace vemra
