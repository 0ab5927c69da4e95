// The way of a transaction from the management library's callback to the item concerned.
#include <exception>
#include <vector>

#include "Support/platform/Dde.h"
#include "Support/services/Trace.h"
#include "Support/services/dde/DDEDataView.h"
#include "Support/services/dde/DDEServer.h"

namespace vemra {
namespace {

constexpr std::uint32_t kTraceLevel = 3;

// Callers are in a callback, which nothing may leave.
void TraceFailure(std::uint32_t type, const char* what) noexcept try {
  TavoTrace::GetTracer().TraceEx("Support\\DDEServer", __LINE__, kTraceNetwork, kTraceLevel,
                                 "DDE callback %4.4XH: %s", type, what);
} catch (...) {
  // There is no one left to tell.
}

}  // namespace

// The callback's arguments.
struct CDDEServer::Transaction {
  std::uint32_t type;
  std::uint16_t format;
  DDEConversation conversation;
  DDEString string1;
  DDEString string2;
  DDEData data;
  std::uintptr_t value1;
  std::uintptr_t value2;
};

// The names that a transaction goes to, and the topic, null where there is none.
struct CDDEServer::Place {
  std::string topic;
  std::string item;
  CDDETopic* found;
};

CDDEServer::Place CDDEServer::FindPlace(const Transaction& t) const {
  const std::string topic = StringFromHsz(t.string1);
  return {topic, StringFromHsz(t.string2), FindTopic(topic)};
}

// The numbers of registered formats may come with their sign in the upper half.
DDEData CDDEServer::StdDDECallback(std::uint32_t type, std::uint32_t format,
                                   DDEConversation conversation, DDEString string1,
                                   DDEString string2, DDEData data, std::uintptr_t value1,
                                   std::uintptr_t value2) try {
  CDDEServer* const server = GetServer();
  if (server == nullptr) return DDEData::kNone;
  return server->Dispatch({type, static_cast<std::uint16_t>(format), conversation, string1, string2,
                           data, value1, value2});
} catch (const std::exception& error) {
  TraceFailure(type, error.what());
  return DDEData::kNone;
} catch (...) {
  TraceFailure(type, "unknown exception");
  return DDEData::kNone;
}

DDEData CDDEServer::Dispatch(const Transaction& t) {
  Status("Callback %4.4XH", t.type);
  switch (t.type) {
    case kDDEDisconnect:
      OnDisconnect(t);
      return DDEData::kNone;
    case kDDEConnectConfirm:
      OnConnectConfirm(t);
      return DDEData::kNone;
    case kDDEWildConnect:
      return OnWildConnect(t);
    default: {
      const DDEData result = Handle(t);
      if (result != DDEData::kNone) return result;
      return CustomCallback(t.type, t.format, t.conversation, t.string1, t.string2, t.data,
                            t.value1, t.value2);
    }
  }
}

int CDDEServer::DoCallback(std::uint32_t type, std::uint16_t format, DDEConversation conversation,
                           DDEString string1, DDEString string2, DDEData data, DDEData& result) {
  result = Handle({type, format, conversation, string1, string2, data, 0, 0});
  return result == DDEData::kNone ? 0 : 1;
}

// None when it was not handled.
DDEData CDDEServer::Handle(const Transaction& t) {
  switch (t.type) {
    case kDDEConnect:
      return DoConnect(t);
    case kDDERequest:
    case kDDEAdviseRequest:
      return DoRequest(t);
    case kDDEPoke:
      return DoPoke(t);
    case kDDEAdviseData:
      return DoAdviseData(t);
    case kDDEExecute:
      return DoExec(t);
    case kDDEAdviseStart:
      return DoAdviseStart(t);
    default:
      return DDEData::kNone;
  }
}

// A conversation that ended in an error leaves that to GetLastError.
void CDDEServer::OnDisconnect(const Transaction& t) {
  platform::DdeConversationState state;
  if (platform::GetDdeManager().QueryConversation(t.conversation, &state) &&
      state.lastError != kDDENoError) {
    lastError_ = state.lastError;
  }
  Status("Disconnect");
  RemoveConversation(t.conversation);
}

void CDDEServer::OnConnectConfirm(const Transaction& t) {
  const std::string topic = StringFromHsz(t.string1);
  Status("Connect to %s", topic.c_str());
  AddConversation(t.conversation, topic);
}

DDEData CDDEServer::OnWildConnect(const Transaction& t) {
  const bool named = t.string2 != DDEString::kNone;
  if (named && platform::GetDdeManager().CompareStringHandles(t.string2, service_) != 0)
    return DDEData::kNone;
  Status("Wild connect to %s", StringFromHsz(t.string1).c_str());
  return DoWildConnect(t.string1);
}

DDEData CDDEServer::DoWildConnect(DDEString topic) {
  const std::string name = StringFromHsz(topic);
  const bool all = topic == DDEString::kNone;
  if (all ? topics_.GetCount() == 0 : FindTopic(name) == nullptr) {
    Status("Wild connect to %s refused", name.c_str());
    return DDEData::kNone;
  }
  std::vector<DDEStringPair> pairs;
  if (all) {
    answeredNames_.clear();
    for (POSITION position = topics_.GetHeadPosition(); position != 0;) {
      const DDEString service = answeredNames_.emplace_back(*this, serviceName_);
      pairs.push_back(
          {service, answeredNames_.emplace_back(*this, topics_.GetNext(position)->GetName())});
    }
  } else {
    pairs.push_back({service_, topic});
  }
  pairs.emplace_back();
  return platform::GetDdeManager().CreateDataHandle(
      instance_, pairs.data(), static_cast<std::uint32_t>(pairs.size() * sizeof(DDEStringPair)),
      DDEString::kNone, 0);
}

DDEData CDDEServer::DoConnect(const Transaction& t) {
  return FindTopic(StringFromHsz(t.string1)) == nullptr ? DDEData::kNone : kDDETrue;
}

DDEData CDDEServer::DoRequest(const Transaction& t) {
  const Place place = FindPlace(t);
  Status("Request %s|%s", place.topic.c_str(), place.item.c_str());
  const void* data = nullptr;
  std::uint32_t size = 0;
  const int handled = place.found != nullptr
                          ? place.found->Request(t.format, place.item, data, size)
                          : Request(t.format, place.topic, place.item, data, size);
  DDEData answer = DDEData::kNone;
  if (handled != 0) {
    answer = platform::GetDdeManager().CreateDataHandle(instance_, data, data == nullptr ? 0 : size,
                                                        t.string2, t.format);
  }
  if (answer == DDEData::kNone)
    Status("Request %s|%s failed", place.topic.c_str(), place.item.c_str());
  return answer;
}

DDEData CDDEServer::DoPoke(const Transaction& t) {
  const Place place = FindPlace(t);
  if (PassPoke(t, place) == 0) {
    Status("Poke %s|%s failed", place.topic.c_str(), place.item.c_str());
    return DDEData::kNone;
  }
  platform::DdeManager& manager = platform::GetDdeManager();
  platform::DdeConversationState state;
  manager.QueryConversation(t.conversation, &state);
  if (!state.sameInstance) manager.PostAdvise(instance_, t.string1, t.string2);
  return kDDEAcknowledged;
}

int CDDEServer::PassPoke(const Transaction& t, const Place& place) {
  const DDEDataView data(t.data);
  if (!data.IsValid()) return 0;
  return place.found != nullptr
             ? place.found->Poke(t.format, place.item, data.GetBytes(), data.GetSize())
             : Poke(t.format, place.topic, place.item, data.GetBytes(), data.GetSize());
}

DDEData CDDEServer::DoAdviseData(const Transaction& t) {
  const Place place = FindPlace(t);
  if (PassAdviseData(t, place) != 0) return kDDEAcknowledged;
  Status("AdviseData %s|%s failed", place.topic.c_str(), place.item.c_str());
  return DDEData::kNone;
}

// A change may be announced without its data. The topic is the other side's, not one of ours.
int CDDEServer::PassAdviseData(const Transaction& t, const Place& place) {
  const DDEDataView data(t.data);
  if (t.data != DDEData::kNone && !data.IsValid()) return 0;
  const DDEHolder<CDDEConv> conversation(FindConversation(t.conversation));
  return conversation.Get() != nullptr ? conversation->AdviseData(t.format, place.topic, place.item,
                                                                  data.GetBytes(), data.GetSize())
                                       : AdviseData(t.format, t.conversation, place.topic,
                                                    place.item, data.GetBytes(), data.GetSize());
}

DDEData CDDEServer::DoExec(const Transaction& t) {
  Status("Exec");
  if (PassExec(t, FindPlace(t)) != 0) return kDDEAcknowledged;
  Status("Exec failed");
  return DDEData::kNone;
}

int CDDEServer::PassExec(const Transaction& t, const Place& place) {
  const DDEDataView command(t.data);
  if (!command.IsValid()) return 0;
  return place.found != nullptr ? place.found->Exec(command.GetBytes(), command.GetSize())
                                : Exec(place.topic, command.GetBytes(), command.GetSize());
}

DDEData CDDEServer::DoAdviseStart(const Transaction& t) {
  const Place place = FindPlace(t);
  const int may = place.found != nullptr ? place.found->CanAdvise(t.format, place.item)
                                         : CanAdvise(t.format, place.topic, place.item);
  if (may != 0) return kDDETrue;
  Status("Can't advise on %s|%s", place.topic.c_str(), place.item.c_str());
  return DDEData::kNone;
}

}  // namespace vemra
