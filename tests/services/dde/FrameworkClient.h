#pragma once

#include <map>
#include <string>
#include <utility>

#include "Support/services/Services.h"
#include "tests/DdeManagers.h"
#include "tests/services/dde/Script.h"

namespace vemra::test {

// The client's part with the framework's classes, which need a created server.
class FrameworkClient : public ScriptClient {
 public:
  explicit FrameworkClient(const TestDdeManager& dde) : dde_(dde) {}

  bool Connect(char who, const std::string& service, const std::string& topic) override {
    clients_[who] = DDEHolder<WatchingConv>(new WatchingConv);
    return Settled(clients_[who]->ConnectTo(service, topic));
  }
  bool Disconnect(char who) override { return Settled(clients_[who]->Terminate()); }
  std::optional<std::string> Request(char who, const std::string& item,
                                     const std::string& format) override {
    std::string data;
    const bool done =
        Settled(format == "TEXT" ? clients_[who]->Request(item, data)
                                 : clients_[who]->Request(NumberOf(format), item, data));
    return done ? std::optional(data) : std::nullopt;
  }
  bool Poke(char who, const std::string& item, const std::string& format,
            const std::string& text) override {
    return Settled(format == "TEXT" ? clients_[who]->Poke(item, text)
                                    : clients_[who]->Poke(NumberOf(format), item, text.data(),
                                                          static_cast<std::uint32_t>(text.size())));
  }
  bool Execute(char who, const std::string& command) override {
    return Settled(clients_[who]->Exec(command));
  }
  bool Watch(char who, const std::string& item, const std::string& format) override {
    return Settled(clients_[who]->Advise(NumberOf(format), item));
  }
  bool Unwatch(char who, const std::string& item, const std::string& format) override {
    return Settled(clients_[who]->StopAdvise(NumberOf(format), item));
  }
  std::string TakeChanges(char who) override { return std::exchange(clients_[who]->changes, {}); }

 private:
  struct WatchingConv : CDDEConv {
    int AdviseData(std::uint16_t /*format*/, const std::string& /*topic*/, const std::string& item,
                   const void* data, std::uint32_t size) override {
      changes += item + ' ' + Readable({static_cast<const char*>(data), size}) + ';';
      return 1;
    }
    std::string changes;
  };

  static std::uint16_t NumberOf(const std::string& format) {
    return format == "TEXT" ? 1 : format == "SYLK" ? 4 : RegisterDDEFormat(format);
  }
  bool Settled(int result) const {
    dde_.Settle();
    return result != 0;
  }

  const TestDdeManager& dde_;
  std::map<char, DDEHolder<WatchingConv>> clients_;
};

}  // namespace vemra::test
