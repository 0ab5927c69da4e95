#include "Support/platform/InProcessDde.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "Support/foundation/Ascii.h"
#include "Support/platform/Clock.h"

namespace vemra::platform {
namespace {

constexpr std::uint16_t kFirstRegisteredFormat = 0xC000;
constexpr std::uint16_t kLastRegisteredFormat = 0xFFFF;

// The flag that keeps the transaction away from the callback; 0 when none does.
std::uint32_t GetRefusal(DDETransaction type) {
  switch (type) {
    case kDDEConnect:
    case kDDEWildConnect:
      return kDDEFailConnections;
    case kDDEAdviseStart:
    case kDDEAdviseStop:
      return kDDEFailAdvises;
    case kDDEExecute:
      return kDDEFailExecutes;
    case kDDEPoke:
      return kDDEFailPokes;
    case kDDERequest:
      return kDDEFailRequests;
    case kDDEConnectConfirm:
      return kDDESkipConnectConfirms;
    case kDDERegister:
      return kDDESkipRegistrations;
    case kDDEUnregister:
      return kDDESkipUnregistrations;
    case kDDEDisconnect:
      return kDDESkipDisconnects;
    default:
      return 0;
  }
}

}  // namespace

InProcessDde::Instance* InProcessDde::FindInstance(std::uint32_t instance) {
  const auto found = instances_.find(instance);
  return found == instances_.end() ? nullptr : &found->second;
}

InProcessDde::Side* InProcessDde::FindSide(DDEConversation conversation) {
  const auto found = sides_.find(conversation);
  return found == sides_.end() ? nullptr : &found->second;
}

bool InProcessDde::Fail(std::uint32_t instance, std::uint32_t error) {
  if (Instance* const failed = FindInstance(instance)) failed->lastError = error;
  return false;
}

std::uint32_t InProcessDde::Initialize(std::uint32_t* instance, DDECallback callback,
                                       std::uint32_t flags) {
  if (callback == nullptr) return kDDEErrorInvalidParameter;
  *instance = static_cast<std::uint32_t>(++last_);
  instances_[*instance].callback = callback;
  instances_[*instance].flags = flags;
  return kDDENoError;
}

bool InProcessDde::Uninitialize(std::uint32_t instance) {
  if (FindInstance(instance) == nullptr) return false;
  std::vector<DDEConversation> ended;
  for (const auto& [conversation, side] : sides_) {
    if (side.instance == instance) ended.push_back(conversation);
  }
  for (const DDEConversation conversation : ended) Disconnect(conversation);
  auto node = instances_.extract(instance);  // so that nothing is posted to it
  for (const StringHold& service : node.mapped().services) PostToAll(kDDEUnregister, service);
  return true;
}

std::uint32_t InProcessDde::GetLastError(std::uint32_t instance) {
  Instance* const asked = FindInstance(instance);
  return asked == nullptr ? kDDEErrorNotInitialized : std::exchange(asked->lastError, kDDENoError);
}

bool InProcessDde::RegisterName(std::uint32_t instance, DDEString name) {
  Instance* const server = FindInstance(instance);
  if (server == nullptr) return false;
  if ((server->flags & kDDEClientOnly) != 0 || HasService(*server, name))
    return Fail(instance, kDDEErrorUsage);
  const StringHold service = HoldString(name);
  if (service.Get() == DDEString::kNone) return Fail(instance, kDDEErrorInvalidParameter);
  server->services.push_back(service);
  PostToAll(kDDERegister, service);
  return true;
}

bool InProcessDde::UnregisterName(std::uint32_t instance, DDEString name) {
  Instance* const server = FindInstance(instance);
  if (server == nullptr) return false;
  const StringHold service = HoldString(name);
  const auto isIt = [name](const StringHold& other) { return other.Get() == name; };
  if (std::erase_if(server->services, isIt) == 0) return Fail(instance, kDDEErrorInvalidParameter);
  PostToAll(kDDEUnregister, service);
  return true;
}

DDEString InProcessDde::CreateStringHandle(std::uint32_t instance, const std::string& text) {
  Instance* const owner = FindInstance(instance);
  if (owner == nullptr) return DDEString::kNone;
  const StringHold string = strings_.Create(text);
  if (string.Get() == DDEString::kNone) {
    Fail(instance, kDDEErrorInvalidParameter);
  } else {
    owner->strings.push_back(string);
  }
  return string.Get();
}

bool InProcessDde::FreeStringHandle(std::uint32_t instance, DDEString string) {
  Instance* const owner = FindInstance(instance);
  if (owner == nullptr) return false;
  const auto isIt = [string](const StringHold& other) { return other.Get() == string; };
  const auto found = std::find_if(owner->strings.begin(), owner->strings.end(), isIt);
  if (found == owner->strings.end()) return Fail(instance, kDDEErrorInvalidParameter);
  owner->strings.erase(found);
  return true;
}

bool InProcessDde::QueryString(std::uint32_t instance, DDEString string, std::string* text) {
  const std::string* const found = strings_.Find(string);
  if (FindInstance(instance) == nullptr || found == nullptr) return false;
  *text = *found;
  return true;
}

int InProcessDde::CompareStringHandles(DDEString a, DDEString b) {
  if (strings_.Find(a) == nullptr || strings_.Find(b) == nullptr) return -1;
  return a == b ? 0 : a < b ? -1 : 1;
}

DDEData InProcessDde::CreateDataHandle(std::uint32_t instance, const void* bytes,
                                       std::uint32_t size, DDEString /*item*/,
                                       std::uint16_t /*format*/) {
  if (FindInstance(instance) == nullptr) return DDEData::kNone;
  const auto* const first = static_cast<const std::uint8_t*>(bytes);
  const DDEData data{++last_};
  blocks_[data].assign(first, first + size);
  return data;
}

const std::uint8_t* InProcessDde::AccessData(DDEData data, std::uint32_t* size) {
  static constexpr std::uint8_t kNothing = 0;  // what an empty block points to
  const auto found = blocks_.find(data);
  if (found == blocks_.end()) return nullptr;
  *size = static_cast<std::uint32_t>(found->second.size());
  return found->second.empty() ? &kNothing : found->second.data();
}

bool InProcessDde::UnaccessData(DDEData data) {
  return blocks_.contains(data);
}

bool InProcessDde::FreeDataHandle(DDEData data) {
  return blocks_.erase(data) != 0;
}

DDEData InProcessDde::Ask(std::uint32_t instance, const Call& call) {
  const Instance* const asked = FindInstance(instance);
  if (asked == nullptr || (asked->flags & GetRefusal(call.type)) != 0) return DDEData::kNone;
  return asked->callback(call.type, call.format, call.conversation, call.string1.Get(),
                         call.string2.Get(), call.data, 0, call.sameInstance ? 1 : 0);
}

void InProcessDde::Post(std::uint32_t instance, Call call) {
  posted_.push_back({instance, std::move(call)});
}

void InProcessDde::PostToAll(DDETransaction type, const StringHold& service) {
  for (const auto& [number, instance] : instances_) {
    Call call;
    call.type = type;
    call.string1 = service;
    call.string2 = service;
    Post(number, std::move(call));
  }
}

void InProcessDde::HandleMessages(std::uint32_t milliseconds) {
  // Only those that are there now: two sides that answer each other for ever must not stay in here.
  for (std::size_t left = posted_.size(); left > 0 && !posted_.empty(); --left) {
    const Posted next = std::move(posted_.front());
    posted_.pop_front();
    const DDEConversation conversation = next.call.conversation;
    if (conversation == DDEConversation::kNone || FindSide(conversation) != nullptr)
      Ask(next.instance, next.call);
    if (next.call.type == kDDEDisconnect) sides_.erase(conversation);
    FreeDataHandle(next.call.data);
  }
  // Nobody else can send anything meanwhile.
  if (milliseconds > 0) SleepMilliseconds(milliseconds);
}

std::uint16_t InProcessDde::RegisterFormat(const std::string& name) {
  if (name.empty() || name.size() > DdeStrings::kMaxLength) return 0;
  std::string folded = name;
  for (char& c : folded) c = static_cast<char>(ToAsciiLower(static_cast<unsigned char>(c)));
  const auto [known, added] = formats_.try_emplace(folded);
  if (added) {
    const std::size_t number = kFirstRegisteredFormat + formatNames_.size();
    if (number > kLastRegisteredFormat) return 0;
    known->second = static_cast<std::uint16_t>(number);
    formatNames_[known->second] = name;
  }
  return known->second;
}

std::string InProcessDde::GetFormatName(std::uint16_t format) {
  const auto found = formatNames_.find(format);
  return found == formatNames_.end() ? "" : found->second;
}

}  // namespace vemra::platform
