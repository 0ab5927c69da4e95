// The conversations of the in-process manager. A callback may change every table, so what is known
// of an instance or a side is looked up again after each.
#include <algorithm>
#include <cstring>

#include "Support/platform/InProcessDde.h"

namespace vemra::platform {

bool InProcessDde::HasService(const Instance& server, DDEString service) const {
  return std::any_of(server.services.begin(), server.services.end(),
                     [service](const StringHold& other) { return other.Get() == service; });
}

// A server that never registered a name is not asked for wild connects either.
bool InProcessDde::MayConnect(std::uint32_t client, std::uint32_t server) {
  const Instance* const asked = FindInstance(server);
  return asked != nullptr && !asked->services.empty() &&
         (client != server || (asked->flags & kDDEFailSelfConnections) == 0);
}

DDEConversation InProcessDde::Connect(std::uint32_t instance, DDEString service, DDEString topic) {
  if (FindInstance(instance) == nullptr) return DDEConversation::kNone;
  const StringHold heldService = HoldString(service);
  const StringHold heldTopic = HoldString(topic);
  if (heldService.Get() != service || heldTopic.Get() != topic) {
    Fail(instance, kDDEErrorInvalidParameter);
    return DDEConversation::kNone;
  }
  const bool wild = service == DDEString::kNone || topic == DDEString::kNone;
  const DDEConversation conversation =
      wild ? ConnectWild(instance, service, topic) : ConnectNamed(instance, service, topic);
  if (conversation == DDEConversation::kNone) Fail(instance, kDDEErrorNoConversation);
  return conversation;
}

DDEConversation InProcessDde::ConnectNamed(std::uint32_t client, DDEString service,
                                           DDEString topic) {
  std::vector<std::uint32_t> servers;
  for (const auto& [number, server] : instances_) {
    if (HasService(server, service)) servers.push_back(number);
  }
  for (const std::uint32_t server : servers) {
    if (!MayConnect(client, server)) continue;
    Call call;
    call.type = kDDEConnect;
    call.string1 = HoldString(topic);
    call.string2 = HoldString(service);
    call.sameInstance = client == server;
    if (Ask(server, call) != DDEData::kNone) return Establish(client, server, service, topic);
  }
  return DDEConversation::kNone;
}

DDEConversation InProcessDde::ConnectWild(std::uint32_t client, DDEString service,
                                          DDEString topic) {
  std::vector<std::uint32_t> servers;
  for (const auto& [number, server] : instances_) servers.push_back(number);
  for (const std::uint32_t server : servers) {
    if (!MayConnect(client, server)) continue;
    const DDEStringPair pair = AskForPair(client, server, service, topic);
    if (pair.service != DDEString::kNone && pair.topic != DDEString::kNone)
      return Establish(client, server, pair.service, pair.topic);
  }
  return DDEConversation::kNone;
}

// The first pair of the server's answer, null when there is none.
DDEStringPair InProcessDde::AskForPair(std::uint32_t client, std::uint32_t server,
                                       DDEString service, DDEString topic) {
  Call call;
  call.type = kDDEWildConnect;
  call.string1 = HoldString(topic);
  call.string2 = HoldString(service);
  call.sameInstance = client == server;
  const DDEData answer = Ask(server, call);
  DDEStringPair pair;
  std::uint32_t size = 0;
  const std::uint8_t* const bytes = AccessData(answer, &size);
  if (bytes != nullptr && size >= sizeof pair) std::memcpy(&pair, bytes, sizeof pair);
  FreeDataHandle(answer);
  return pair;
}

DDEConversation InProcessDde::AddSide(Side side) {
  const DDEConversation conversation{++last_};
  sides_[conversation] = std::move(side);
  return conversation;
}

DDEConversation InProcessDde::Establish(std::uint32_t client, std::uint32_t server,
                                        DDEString service, DDEString topic) {
  if (FindInstance(client) == nullptr || FindInstance(server) == nullptr)
    return DDEConversation::kNone;
  Side side;
  side.sameInstance = client == server;
  side.service = HoldString(service);
  side.topic = HoldString(topic);
  side.instance = server;
  const DDEConversation serverSide = AddSide(side);
  side.instance = client;
  side.client = true;
  side.partner = serverSide;
  const DDEConversation clientSide = AddSide(side);
  sides_[serverSide].partner = clientSide;
  Call call;
  call.type = kDDEConnectConfirm;
  call.conversation = serverSide;
  call.string1 = side.topic;
  call.string2 = side.service;
  call.sameInstance = side.sameInstance;
  Ask(server, call);
  return FindSide(clientSide) == nullptr ? DDEConversation::kNone : clientSide;
}

bool InProcessDde::Disconnect(DDEConversation conversation) {
  const Side* const side = FindSide(conversation);
  if (side == nullptr) return false;
  const DDEConversation partner = side->partner;
  sides_.erase(conversation);
  Side* const other = FindSide(partner);
  if (other == nullptr) return true;
  other->partner = DDEConversation::kNone;
  other->loops.clear();
  Call call;
  call.type = kDDEDisconnect;
  call.conversation = partner;
  call.sameInstance = other->sameInstance;
  Post(other->instance, std::move(call));
  return true;
}

bool InProcessDde::QueryConversation(DDEConversation conversation, DdeConversationState* state) {
  const Side* const side = FindSide(conversation);
  if (side == nullptr) return false;
  state->connected = side->partner != DDEConversation::kNone;
  state->sameInstance = side->sameInstance;
  state->lastError = side->lastError;
  return true;
}

DDEData InProcessDde::FailTransaction(DDEConversation conversation, std::uint32_t error) {
  if (Side* const side = FindSide(conversation)) {
    side->lastError = error;
    Fail(side->instance, error);
  }
  return DDEData::kNone;
}

DDEData InProcessDde::ClientTransaction(const void* bytes, std::uint32_t size,
                                        DDEConversation conversation, DDEString item,
                                        std::uint16_t format, DDETransaction type,
                                        std::uint32_t /*timeoutMilliseconds*/) {
  const Side* const found = FindSide(conversation);
  if (found == nullptr || !found->client) return DDEData::kNone;
  if (found->partner == DDEConversation::kNone)
    return FailTransaction(conversation, kDDEErrorNoConversation);
  const Side side = *found;
  Instance* const client = FindInstance(side.instance);
  if (client->waiting) return FailTransaction(conversation, kDDEErrorReentrancy);
  Call call;
  call.type = type;
  call.format = format;
  call.conversation = side.partner;
  call.string1 = side.topic;
  call.string2 = HoldString(item);
  if (call.string2.Get() == DDEString::kNone && type != kDDEExecute)
    return FailTransaction(conversation, kDDEErrorInvalidParameter);
  if (type == kDDEPoke || type == kDDEExecute)
    call.data = CreateDataHandle(side.instance, bytes, size, item, format);
  client->waiting = true;
  const DDEData answer = Transact(side, call);
  FreeDataHandle(call.data);
  Instance* const again = FindInstance(side.instance);
  if (again == nullptr) {
    FreeDataHandle(answer);
    return DDEData::kNone;
  }
  again->waiting = false;
  if (answer != DDEData::kNone && answer != kDDEBusy) return answer;
  return FailTransaction(conversation, answer == kDDEBusy ? kDDEErrorBusy : kDDEErrorNotProcessed);
}

DDEData InProcessDde::Transact(const Side& client, const Call& call) {
  const Side* const partner = FindSide(client.partner);
  const std::uint32_t server = partner->instance;
  switch (call.type) {
    case kDDERequest: {
      const DDEData data = Ask(server, call);
      return blocks_.contains(data) ? data : DDEData::kNone;
    }
    case kDDEPoke:
    case kDDEExecute: {
      const DDEData flags = Ask(server, call);
      return flags == kDDEAcknowledged ? kDDETrue : flags == kDDEBusy ? kDDEBusy : DDEData::kNone;
    }
    case kDDEAdviseStart:
      return StartLoop(client, call);
    case kDDEAdviseStop:
      return StopLoop(client, call);
    default:
      return DDEData::kNone;
  }
}

DDEData InProcessDde::StartLoop(const Side& client, const Call& call) {
  const std::uint32_t server = FindSide(client.partner)->instance;
  if (Ask(server, call) == DDEData::kNone) return DDEData::kNone;
  Side* const side = FindSide(client.partner);
  if (side == nullptr) return DDEData::kNone;
  const auto isIt = [&call](const AdviseLoop& loop) {
    return loop.item.Get() == call.string2.Get() && loop.format == call.format;
  };
  if (std::none_of(side->loops.begin(), side->loops.end(), isIt))
    side->loops.push_back({call.string2, call.format});
  return kDDETrue;
}

DDEData InProcessDde::StopLoop(const Side& client, const Call& call) {
  Side* const side = FindSide(client.partner);
  const auto isIt = [&call](const AdviseLoop& loop) {
    return loop.item.Get() == call.string2.Get() && loop.format == call.format;
  };
  if (std::erase_if(side->loops, isIt) == 0) return DDEData::kNone;
  Ask(side->instance, call);
  return kDDETrue;
}

bool InProcessDde::PostAdvise(std::uint32_t instance, DDEString topic, DDEString item) {
  if (FindInstance(instance) == nullptr) return false;
  std::vector<std::pair<DDEConversation, AdviseLoop>> loops;
  for (const auto& [conversation, side] : sides_) {
    if (side.instance != instance) continue;
    if (topic != DDEString::kNone && side.topic.Get() != topic) continue;
    for (const AdviseLoop& loop : side.loops) {
      if (item == DDEString::kNone || loop.item.Get() == item)
        loops.emplace_back(conversation, loop);
    }
  }
  for (const auto& [conversation, loop] : loops) PostLoop(conversation, loop);
  return true;
}

void InProcessDde::PostLoop(DDEConversation server, const AdviseLoop& loop) {
  const Side* const asked = FindSide(server);
  if (asked == nullptr) return;
  Call call;
  call.type = kDDEAdviseRequest;
  call.format = loop.format;
  call.conversation = server;
  call.string1 = asked->topic;
  call.string2 = loop.item;
  const DDEData data = Ask(asked->instance, call);
  const Side* const side = FindSide(server);
  const Side* const client = side == nullptr ? nullptr : FindSide(side->partner);
  if (client == nullptr || !blocks_.contains(data)) {
    FreeDataHandle(data);
    return;
  }
  call.type = kDDEAdviseData;
  call.conversation = side->partner;
  call.data = data;
  Post(client->instance, std::move(call));
}

}  // namespace vemra::platform
