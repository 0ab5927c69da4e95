#pragma once

#include <cstdint>
#include <string>

#include "Support/services/dde/DDECountedObject.h"
#include "Support/services/dde/DDETypes.h"

namespace vemra {

// One conversation of the process's server: one that another program opened, or one that ConnectTo
// opens to another program. While it is open the server holds it; hold it too (DDEHolder) to use it
// after it may have ended:
//
//   const DDEHolder<CDDEConv> conversation(new CDDEConv);
//   std::string texts;
//   if (conversation->ConnectTo("Library", "Manuals") && conversation->Request("Texts", texts)) ...
//
// Transactions are for conversations that this side opened. They wait for the answer, handling
// messages meanwhile, so that callbacks may come. They return 0 when the conversation is not open,
// the other side refuses or does not answer in time; the server's GetLastError tells which.
class SUPPORT_API CDDEConv : public CDDECountedObject {
 public:
  static constexpr std::uint32_t kDefaultTimeout = 10'000;  // milliseconds

  CDDEConv() = default;  // not open

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  // Opens it. 0 when it is open, there is no created server, or nobody offers the service and
  // topic; the last is reported to Status.
  virtual int ConnectTo(const std::string& service, const std::string& topic);
  // Ends it, also where the other side is gone. The result is the system's; 0 when it was not open.
  virtual int Terminate();

  // Data in the format, whole: the block may be larger than what the other side stored in it.
  int Request(std::uint16_t format, const std::string& item, std::string& data);
  int Request(const std::string& item, std::string& text);  // TEXT, up to its NUL
  int Poke(std::uint16_t format, const std::string& item, const void* data, std::uint32_t size);
  int Poke(const std::string& item, const std::string& text);  // TEXT
  int Exec(const std::string& command);
  // Starts to watch an item: AdviseData is called for each of its changes, with the data in the
  // format; and ends that.
  int Advise(std::uint16_t format, const std::string& item);
  int StopAdvise(std::uint16_t format, const std::string& item);

  // An item that is watched has changed; the data is another program's and must be checked before
  // it is used. 1 when that was handled. Here it asks the server's AdviseData.
  virtual int AdviseData(std::uint16_t format, const std::string& topic, const std::string& item,
                         const void* data, std::uint32_t size);

  DDEConversation GetHandle() const { return handle_; }  // kNone while it is not open
  const std::string& GetTopic() const { return topic_; }
  void SetTimeout(std::uint32_t milliseconds) { timeout_ = milliseconds; }

 private:
  friend class CDDEServer;

  DDEData Transact(DDETransaction type, std::uint16_t format, const std::string& item,
                   const void* bytes, std::uint32_t size);

  DDEConversation handle_ = DDEConversation::kNone;
  std::string topic_;
  std::uint32_t timeout_ = kDefaultTimeout;
};

}  // namespace vemra
