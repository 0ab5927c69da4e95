#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "Support/platform/Dde.h"
#include "Support/platform/DdeStrings.h"

namespace vemra::platform {

// A DDE manager whose conversations are between instances of one process, all on one thread.
//
// What the system posts (advise data, disconnects, service names that come and go) waits for
// HandleMessages; transactions that are waited for go straight to the other side's callback. A
// callback may call anything, also end its own instance.
class InProcessDde final : public DdeManager {
 public:
  std::uint32_t Initialize(std::uint32_t* instance, DDECallback callback,
                           std::uint32_t flags) override;
  bool Uninitialize(std::uint32_t instance) override;
  std::uint32_t GetLastError(std::uint32_t instance) override;
  bool RegisterName(std::uint32_t instance, DDEString name) override;
  bool UnregisterName(std::uint32_t instance, DDEString name) override;
  DDEString CreateStringHandle(std::uint32_t instance, const std::string& text) override;
  bool FreeStringHandle(std::uint32_t instance, DDEString string) override;
  bool QueryString(std::uint32_t instance, DDEString string, std::string* text) override;
  int CompareStringHandles(DDEString a, DDEString b) override;
  DDEData CreateDataHandle(std::uint32_t instance, const void* bytes, std::uint32_t size,
                           DDEString item, std::uint16_t format) override;
  const std::uint8_t* AccessData(DDEData data, std::uint32_t* size) override;
  bool UnaccessData(DDEData data) override;
  bool FreeDataHandle(DDEData data) override;
  DDEConversation Connect(std::uint32_t instance, DDEString service, DDEString topic) override;
  bool Disconnect(DDEConversation conversation) override;
  bool QueryConversation(DDEConversation conversation, DdeConversationState* state) override;
  DDEData ClientTransaction(const void* bytes, std::uint32_t size, DDEConversation conversation,
                            DDEString item, std::uint16_t format, DDETransaction type,
                            std::uint32_t timeoutMilliseconds) override;
  bool PostAdvise(std::uint32_t instance, DDEString topic, DDEString item) override;
  std::uint16_t RegisterFormat(const std::string& name) override;
  std::string GetFormatName(std::uint16_t format) override;
  void HandleMessages(std::uint32_t milliseconds) override;

  // What is alive, for tests of leaks.
  std::size_t GetStringCount() const { return strings_.CountHolders(); }
  std::size_t GetDataCount() const { return blocks_.size(); }
  std::size_t GetConversationCount() const { return sides_.size(); }

 private:
  using StringHold = DdeStrings::Hold;

  struct Instance {
    DDECallback callback = nullptr;
    std::uint32_t flags = 0;
    std::uint32_t lastError = kDDENoError;
    bool waiting = false;             // for the answer to a transaction
    std::vector<StringHold> strings;  // one for each creation
    std::vector<StringHold> services;
  };
  struct AdviseLoop {
    StringHold item;
    std::uint16_t format = 0;
  };
  // One side of a conversation; the other one is its partner, which is null once that has left.
  struct Side {
    std::uint32_t instance = 0;
    DDEConversation partner = DDEConversation::kNone;
    bool client = false;
    bool sameInstance = false;
    StringHold service;
    StringHold topic;
    std::vector<AdviseLoop> loops;  // of a server's side
    std::uint32_t lastError = kDDENoError;
  };
  // A call of the callback, with what it needs kept alive.
  struct Call {
    DDETransaction type = kDDEError;
    std::uint16_t format = 0;
    DDEConversation conversation = DDEConversation::kNone;
    StringHold string1;
    StringHold string2;
    DDEData data = DDEData::kNone;
    bool sameInstance = false;
  };
  struct Posted {
    std::uint32_t instance = 0;
    Call call;
  };

  Instance* FindInstance(std::uint32_t instance);
  Side* FindSide(DDEConversation conversation);
  bool Fail(std::uint32_t instance, std::uint32_t error);
  DDEData FailTransaction(DDEConversation conversation, std::uint32_t error);
  StringHold HoldString(DDEString string) { return {&strings_, string}; }

  // The callback's answer; none when the instance's flags refuse the transaction.
  DDEData Ask(std::uint32_t instance, const Call& call);
  void Post(std::uint32_t instance, Call call);
  void PostToAll(DDETransaction type, const StringHold& service);

  bool HasService(const Instance& server, DDEString service) const;
  bool MayConnect(std::uint32_t client, std::uint32_t server);
  DDEConversation ConnectNamed(std::uint32_t client, DDEString service, DDEString topic);
  DDEConversation ConnectWild(std::uint32_t client, DDEString service, DDEString topic);
  DDEStringPair AskForPair(std::uint32_t client, std::uint32_t server, DDEString service,
                           DDEString topic);
  DDEConversation Establish(std::uint32_t client, std::uint32_t server, DDEString service,
                            DDEString topic);
  DDEConversation AddSide(Side side);
  void PostLoop(DDEConversation server, const AdviseLoop& loop);
  DDEData Transact(const Side& client, const Call& call);
  DDEData StartLoop(const Side& client, const Call& call);
  DDEData StopLoop(const Side& client, const Call& call);

  DdeStrings strings_;
  // The latest number given to an instance, a conversation or a block; above all that a callback
  // answers which is no block.
  std::uintptr_t last_ = 0x10000;
  std::map<std::uint32_t, Instance> instances_;
  std::map<DDEConversation, Side> sides_;
  std::map<DDEData, std::vector<std::uint8_t>> blocks_;
  std::deque<Posted> posted_;
  std::map<std::string, std::uint16_t> formats_;  // by the name in lower case
  std::map<std::uint16_t, std::string> formatNames_;
};

}  // namespace vemra::platform
