#pragma once

#include <map>
#include <string>
#include <utility>

#include "Support/services/Services.h"
#include "tests/DdeManagers.h"
#include "tests/services/dde/Script.h"

namespace vemra::test {

// That neither a server nor its clients have left anything.
inline void ExpectNothingLeft(const TestDdeManager& dde) {
  dde.Settle();
  EXPECT_EQ(CDDEServer::GetServer(), nullptr);
  EXPECT_EQ(dde.InProcess().GetStringCount(), 0U);
  EXPECT_EQ(dde.InProcess().GetDataCount(), 0U);
  EXPECT_EQ(dde.InProcess().GetConversationCount(), 0U);
}

// Another program as far as the framework can tell: instances of the manager's, one for each
// letter, with conversations by nothing but the manager's calls.
class OtherProgram : public ScriptClient {
 public:
  explicit OtherProgram(const TestDdeManager& dde) : dde_(dde) { current = this; }
  ~OtherProgram() override {
    while (!clients_.empty()) Die(clients_.begin()->first);
  }

  bool Connect(char who, const std::string& service, const std::string& topic) override {
    Client& client = clients_[who];
    if (client.instance == 0) dde_->Initialize(&client.instance, TakeAdviseData, kDDEClientOnly);
    const Name serviceName(*this, client, service);
    const Name topicName(*this, client, topic);
    client.conversation = dde_->Connect(client.instance, serviceName.handle, topicName.handle);
    dde_.Settle();
    return client.conversation != DDEConversation::kNone;
  }
  bool Disconnect(char who) override {
    const bool done = dde_->Disconnect(clients_[who].conversation);
    dde_.Settle();
    return done;
  }
  // A poke is text without a NUL at its end, a command is one with it.
  std::optional<std::string> Transact(char who, const std::string& verb, const std::string& item,
                                      const std::string& format, const std::string& data) override {
    static const std::map<std::string, DDETransaction> kTypes = {{"request", kDDERequest},
                                                                 {"poke", kDDEPoke},
                                                                 {"execute", kDDEExecute},
                                                                 {"watch", kDDEAdviseStart},
                                                                 {"unwatch", kDDEAdviseStop}};
    const Client& client = clients_[who];
    const Name name(*this, client, item.empty() ? "*" : item);
    const std::size_t size = data.size() + (verb == "execute" ? 1 : 0);
    const DDEData answer =
        dde_->ClientTransaction(data.c_str(), static_cast<std::uint32_t>(size), client.conversation,
                                name.handle, NumberOf(format), kTypes.at(verb), 5000);
    dde_.Settle();
    if (answer == DDEData::kNone) return std::nullopt;
    if (verb != "request") return "";
    const std::string bytes = dde_.Bytes(answer);
    dde_->FreeDataHandle(answer);
    return bytes;
  }
  std::string TakeChanges(char who) override { return std::exchange(clients_[who].changes, {}); }

  // The client ends without a word to its conversation.
  void Die(char who) {
    dde_->Uninitialize(clients_[who].instance);
    clients_.erase(who);
    dde_.Settle();
  }

 private:
  struct Client {
    std::uint32_t instance = 0;
    DDEConversation conversation = DDEConversation::kNone;
    std::string changes;
  };
  struct Name {
    Name(const OtherProgram& itsProgram, const Client& itsClient, const std::string& name)
        : program(itsProgram), client(itsClient) {
      if (name != "*") handle = program.dde_->CreateStringHandle(client.instance, name);
    }
    ~Name() {
      if (handle != DDEString::kNone) program.dde_->FreeStringHandle(client.instance, handle);
    }
    const OtherProgram& program;
    const Client& client;
    DDEString handle = DDEString::kNone;
  };

  static DDEData TakeAdviseData(std::uint32_t type, std::uint32_t /*format*/,
                                DDEConversation conversation, DDEString /*topic*/, DDEString item,
                                DDEData data, std::uintptr_t, std::uintptr_t) {
    if (type != kDDEAdviseData) return DDEData::kNone;
    for (auto& [who, client] : current->clients_) {
      if (client.conversation != conversation) continue;
      client.changes += current->dde_.Text(client.instance, item) + ' ' +
                        Readable(current->dde_.Bytes(data)) + ';';
    }
    return kDDEAcknowledged;
  }
  std::uint16_t NumberOf(const std::string& format) const {
    if (format.empty()) return 0;
    return format == "TEXT" ? 1 : format == "SYLK" ? 4 : dde_->RegisterFormat(format);
  }

  static inline OtherProgram* current = nullptr;

  const TestDdeManager& dde_;
  std::map<char, Client> clients_;
};

}  // namespace vemra::test
