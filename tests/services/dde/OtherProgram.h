#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "tests/DdeManagers.h"
#include "tests/services/dde/Script.h"

namespace vemra::test {

// Another program as far as the framework can tell: instances of the manager's, one for each
// letter, with conversations by nothing but the manager's calls.
class OtherProgram : public ScriptClient {
 public:
  explicit OtherProgram(const TestDdeManager& dde) : dde_(dde) {}
  ~OtherProgram() override {
    for (const auto& [who, client] : clients_) dde_->Uninitialize(client.instance);
    dde_.Settle();
  }

  bool Connect(char who, const std::string& service, const std::string& topic) override {
    Client& client = clients_[who];
    if (client.instance == 0) dde_->Initialize(&client.instance, TakeAdviseData, kDDEClientOnly);
    current = this;
    const DDEString a = NameOf(client, service);
    const DDEString b = NameOf(client, topic);
    client.conversation = dde_->Connect(client.instance, a, b);
    if (a != DDEString::kNone) dde_->FreeStringHandle(client.instance, a);
    if (b != DDEString::kNone) dde_->FreeStringHandle(client.instance, b);
    dde_.Settle();
    return client.conversation != DDEConversation::kNone;
  }
  bool Disconnect(char who) override {
    const bool done = dde_->Disconnect(clients_[who].conversation);
    dde_.Settle();
    return done;
  }
  std::optional<std::string> Request(char who, const std::string& item,
                                     const std::string& format) override {
    const DDEData data = Transact(who, kDDERequest, item, format, "");
    if (data == DDEData::kNone) return std::nullopt;
    const std::string bytes = dde_.Bytes(data);
    dde_->FreeDataHandle(data);
    return bytes;
  }
  // The text without a NUL at its end.
  bool Poke(char who, const std::string& item, const std::string& format,
            const std::string& text) override {
    return Transact(who, kDDEPoke, item, format, text) != DDEData::kNone;
  }
  bool Execute(char who, const std::string& command) override {
    return Transact(who, kDDEExecute, "*", "", command + '\0') != DDEData::kNone;
  }
  bool Watch(char who, const std::string& item, const std::string& format) override {
    return Transact(who, kDDEAdviseStart, item, format, "") != DDEData::kNone;
  }
  bool Unwatch(char who, const std::string& item, const std::string& format) override {
    return Transact(who, kDDEAdviseStop, item, format, "") != DDEData::kNone;
  }
  std::string TakeChanges(char who) override { return std::exchange(clients_[who].changes, {}); }

  std::uint32_t GetInstance(char who) { return clients_[who].instance; }
  // The program ends without a word to its conversations.
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
  DDEString NameOf(const Client& client, const std::string& name) {
    return name == "*" ? DDEString::kNone : dde_->CreateStringHandle(client.instance, name);
  }
  std::uint16_t NumberOf(const std::string& format) {
    if (format.empty()) return 0;
    return format == "TEXT" ? 1 : format == "SYLK" ? 4 : dde_->RegisterFormat(format);
  }
  DDEData Transact(char who, DDETransaction type, const std::string& item,
                   const std::string& format, const std::string& bytes) {
    const Client& client = clients_[who];
    const DDEString name = NameOf(client, item);
    const std::uint16_t number = NumberOf(format);
    const DDEData result =
        dde_->ClientTransaction(bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                                client.conversation, name, number, type, 5000);
    dde_->FreeStringHandle(client.instance, name);
    dde_.Settle();
    return result;
  }

  static inline OtherProgram* current = nullptr;

  const TestDdeManager& dde_;
  std::map<char, Client> clients_;
};

}  // namespace vemra::test
