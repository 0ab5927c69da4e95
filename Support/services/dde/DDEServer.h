#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "Support/services/dde/DDEConvList.h"
#include "Support/services/dde/DDETopicList.h"
#include "Support/services/dde/DDETypes.h"
#include "Support/services/dde/HSZ.h"

namespace vemra {

// The DDE service of the process: it registers a service name, owns the topics, keeps the
// conversations, and leads what the management library's callback brings to the topic and item
// concerned. On Windows its conversations reach every program of the session that knows DDE; on
// Linux they stay within the process.
//
// All of it happens on one thread, the one that called Create: the callback comes while that thread
// handles messages, in its own loop or in HandleMessages, and while it waits for a transaction of
// its own. Nothing that is called from the callback may destroy the server, a topic or an item.
// What it throws ends there: the transaction counts as not handled, and a trace line tells of it.
//
// A transaction is handled by the item, else the topic, else the server's operation of that name,
// else CustomCallback; the first that returns other than 0 ends it. A request for a topic, an item
// or a format that is not there therefore ends as a refusal, after the text "Request %s|%s failed".
//
// Texts are 8-bit in the system code page. Names are the same without regard to ASCII case.
class SUPPORT_API CDDEServer : public DDEObject {
 public:
  CDDEServer() = default;
  // Shuts down. A derived class that takes part in callbacks calls Shutdown in its own destructor.
  ~CDDEServer() override;

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  // Called at the end of Create, whose result it gives; here 1.
  virtual int OnCreate();
  // The management library's latest error (DDEErrorCode), also after a Create that failed.
  virtual std::uint32_t GetLastError();
  // Transactions that nobody else handled, as the callback got them (DDETypes.h); here none.
  virtual DDEData CustomCallback(std::uint32_t type, std::uint16_t format,
                                 DDEConversation conversation, DDEString string1, DDEString string2,
                                 DDEData data, std::uintptr_t value1, std::uintptr_t value2);
  // What no item handled; here always 0. The arguments are those of CDDEItem and CDDEConv.
  virtual int Request(std::uint16_t format, const std::string& topic, const std::string& item,
                      const void*& data, std::uint32_t& size);
  virtual int Poke(std::uint16_t format, const std::string& topic, const std::string& item,
                   const void* data, std::uint32_t size);
  virtual int AdviseData(std::uint16_t format, DDEConversation conversation,
                         const std::string& topic, const std::string& item, const void* data,
                         std::uint32_t size);
  virtual int Exec(const std::string& topic, const void* data, std::uint32_t size);
  // Every message about what happens, by the rules of printf; here nothing.
  virtual void Status(const char* format, ...) SUPPORT_PRINTF(2, 3);
  // 0, and the topic is destroyed, when it has no name or one that the server has already. Topics
  // may be added before and after Create; they stay over Shutdown.
  virtual int AddTopic(std::unique_ptr<CDDETopic> topic);
  virtual int CanAdvise(std::uint16_t format, const std::string& topic, const std::string& item);

  // Registers the service and adds the topic "System" where the server does not have one. flags
  // (DDEFlags) go to the management library. instance, where it is not null, gets the number of the
  // library's instance. An empty name registers nothing: a program that only asks others.
  //
  // Returns what OnCreate returns; whatever that is, the server is created then. 0, with nothing
  // done, when a server of this process is created already or the library refuses; another may then
  // be created. That other programs offer a service of the same name is no error of the library:
  // which of them a client meets is up to the system.
  int Create(const std::string& serviceName, std::uint32_t flags = 0,
             std::uint32_t* instance = nullptr);
  // Ends every conversation and the service; nothing when it is not created. Then it may be created
  // again, or another server.
  void Shutdown();
  // For a program without a message loop of its own: handles what came, and what comes in this
  // time. On Windows any messages of the thread; it returns early when the program is to quit.
  static void HandleMessages(std::uint32_t milliseconds);

  // The server of the process; null before Create and after Shutdown.
  static CDDEServer* GetServer();
  std::uint32_t GetInstance() const { return instance_; }  // 0 while it is not created
  bool IsCreated() const { return created_; }
  const std::string& GetServiceName() const { return serviceName_; }
  const CDDETopicList& GetTopics() const { return topics_; }
  const CDDEConvList& GetConversations() const { return conversations_; }

  CDDETopic* FindTopic(const std::string& name) const;             // null when there is none
  CDDEConv* FindConversation(DDEConversation conversation) const;  // likewise

  // A conversation that another program opened; one that this side opened. The server holds it
  // until it is removed, which also leaves the object without its handle.
  void AddConversation(DDEConversation conversation, const std::string& topic);
  void AddConversation(CDDEConv& conversation);
  int RemoveConversation(DDEConversation conversation);  // 0 when there is none

  // The name that a handle stands for: "<null>" for the null handle, "<error>" for one that cannot
  // be read.
  std::string StringFromHsz(DDEString string) const;

  // The answer to a wild connect for the topic, or for all topics when it is null: a block of
  // (service, topic) pairs that ends with a pair of null handles. None when there is no such topic.
  DDEData DoWildConnect(DDEString topic);
  // Leads a connect, request, advise request, poke, execute, advise start or advise data to those
  // concerned. 1 and the answer when it was handled, else 0.
  int DoCallback(std::uint32_t type, std::uint16_t format, DDEConversation conversation,
                 DDEString string1, DDEString string2, DDEData data, DDEData& result);
  // The callback given to the management library.
  static DDEData StdDDECallback(std::uint32_t type, std::uint32_t format,
                                DDEConversation conversation, DDEString string1, DDEString string2,
                                DDEData data, std::uintptr_t value1, std::uintptr_t value2);

 private:
  struct Transaction;
  struct Place;

  int Open(const std::string& serviceName, std::uint32_t flags, std::uint32_t* instance);

  DDEData Dispatch(const Transaction& transaction);
  void OnDisconnect(const Transaction& transaction);
  void OnConnectConfirm(const Transaction& transaction);
  DDEData OnWildConnect(const Transaction& transaction);
  DDEData Handle(const Transaction& transaction);
  Place FindPlace(const Transaction& transaction) const;
  DDEData DoConnect(const Transaction& transaction);
  DDEData DoRequest(const Transaction& transaction);
  DDEData DoPoke(const Transaction& transaction);
  DDEData DoAdviseData(const Transaction& transaction);
  DDEData DoExec(const Transaction& transaction);
  DDEData DoAdviseStart(const Transaction& transaction);
  int PassPoke(const Transaction& transaction, const Place& place);
  int PassAdviseData(const Transaction& transaction, const Place& place);
  int PassExec(const Transaction& transaction, const Place& place);

  std::uint32_t instance_ = 0;
  std::string serviceName_;
  CHSZ service_;
  CDDETopicList topics_;
  CDDEConvList conversations_;
  bool created_ = false;
  std::uint32_t lastError_ = 0;
  // The names of the latest wild connect's answer, which is read after it was given.
  std::deque<CHSZ> answeredNames_;
};

}  // namespace vemra
