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
  std::optional<std::string> Transact(char who, const std::string& verb, const std::string& item,
                                      const std::string& format, const std::string& data) override {
    std::string answer;
    const bool done = Settled(Act(*clients_[who], verb, item, format, data, answer));
    return done ? std::optional(answer) : std::nullopt;
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

  // Text goes by the calls of its own.
  static int Act(CDDEConv& conversation, const std::string& verb, const std::string& item,
                 const std::string& format, const std::string& data, std::string& answer) {
    if (verb == "execute") return conversation.Exec(data);
    const bool isText = format == "TEXT";
    const std::uint16_t number = isText             ? std::uint16_t{kDDEFormatText}
                                 : format == "SYLK" ? std::uint16_t{4}
                                                    : RegisterDDEFormat(format);
    if (verb == "watch") return conversation.Advise(number, item);
    if (verb == "unwatch") return conversation.StopAdvise(number, item);
    if (verb == "request") {
      return isText ? conversation.Request(item, answer)
                    : conversation.Request(number, item, answer);
    }
    const auto size = static_cast<std::uint32_t>(data.size());
    return isText ? conversation.Poke(item, data)
                  : conversation.Poke(number, item, data.data(), size);
  }
  bool Settled(int result) const {
    dde_.Settle();
    return result != 0;
  }

  const TestDdeManager& dde_;
  std::map<char, DDEHolder<WatchingConv>> clients_;
};

}  // namespace vemra::test
