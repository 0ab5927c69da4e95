#include "Support/services/dde/DDEServer.h"

#include <atomic>

#include "Support/platform/Dde.h"
#include "Support/services/dde/DDEServerSystemTopic.h"

namespace vemra {
namespace {

// The callback has no object to go by.
std::atomic<CDDEServer*> theServer = nullptr;

}  // namespace

CDDEServer::~CDDEServer() {
  Shutdown();
}

CDDEServer* CDDEServer::GetServer() {
  return theServer;
}

int CDDEServer::OnCreate() {
  return 1;
}

std::uint32_t CDDEServer::GetLastError() {
  // Asking the library resets it.
  if (instance_ != 0) {
    const std::uint32_t error = platform::GetDdeManager().GetLastError(instance_);
    if (error != kDDENoError) lastError_ = error;
  }
  return lastError_;
}

DDEData CDDEServer::CustomCallback(std::uint32_t /*type*/, std::uint16_t /*format*/,
                                   DDEConversation /*conversation*/, DDEString /*string1*/,
                                   DDEString /*string2*/, DDEData /*data*/,
                                   std::uintptr_t /*value1*/, std::uintptr_t /*value2*/) {
  return DDEData::kNone;
}

int CDDEServer::Request(std::uint16_t /*format*/, const std::string& /*topic*/,
                        const std::string& /*item*/, const void*& /*data*/,
                        std::uint32_t& /*size*/) {
  return 0;
}

int CDDEServer::Poke(std::uint16_t /*format*/, const std::string& /*topic*/,
                     const std::string& /*item*/, const void* /*data*/, std::uint32_t /*size*/) {
  return 0;
}

int CDDEServer::AdviseData(std::uint16_t /*format*/, DDEConversation /*conversation*/,
                           const std::string& /*topic*/, const std::string& /*item*/,
                           const void* /*data*/, std::uint32_t /*size*/) {
  return 0;
}

int CDDEServer::Exec(const std::string& /*topic*/, const void* /*data*/, std::uint32_t /*size*/) {
  return 0;
}

void CDDEServer::Status(const char* /*format*/, ...) {}

int CDDEServer::AddTopic(std::unique_ptr<CDDETopic> topic) {
  CDDETopic* const added = topic.get();
  if (topics_.Add(std::move(topic)) == 0) return 0;
  added->server_ = this;
  return 1;
}

int CDDEServer::CanAdvise(std::uint16_t /*format*/, const std::string& /*topic*/,
                          const std::string& /*item*/) {
  return 0;
}

int CDDEServer::Create(const std::string& serviceName, std::uint32_t flags,
                       std::uint32_t* instance) {
  CDDEServer* none = nullptr;
  if (!theServer.compare_exchange_strong(none, this)) return 0;
  if (Open(serviceName, flags, instance) == 0) {
    Shutdown();
    return 0;
  }
  created_ = true;
  return OnCreate();
}

int CDDEServer::Open(const std::string& serviceName, std::uint32_t flags, std::uint32_t* instance) {
  platform::DdeManager& manager = platform::GetDdeManager();
  lastError_ = manager.Initialize(&instance_, StdDDECallback, flags);
  if (lastError_ != kDDENoError) {
    instance_ = 0;
    return 0;
  }
  if (instance != nullptr) *instance = instance_;
  serviceName_ = serviceName;
  if (!serviceName.empty() && service_.Create(*this, serviceName) == 0) return 0;
  // It is there already when this object is created a second time.
  if (FindTopic("System") == nullptr && AddTopic(std::make_unique<CDDEServerSystemTopic>()) == 0)
    return 0;
  return serviceName.empty() || manager.RegisterName(instance_, service_) ? 1 : 0;
}

// Also what a Create that failed has left.
void CDDEServer::Shutdown() {
  if (theServer != this) return;
  lastError_ = CDDEServer::GetLastError();
  for (POSITION first = conversations_.GetHeadPosition(); first != 0;
       first = conversations_.GetHeadPosition()) {
    const DDEHolder<CDDEConv> ended(conversations_.GetNext(first));
    ended->Terminate();
    ended->handle_ = DDEConversation::kNone;  // whatever a derived class made of that
    conversations_.Remove(*ended);
  }
  platform::DdeManager& manager = platform::GetDdeManager();
  if (created_ && service_ != DDEString::kNone) manager.UnregisterName(instance_, service_);
  answeredNames_.clear();
  service_.Free();
  created_ = false;
  const std::uint32_t ended = std::exchange(instance_, 0);
  theServer = nullptr;
  if (ended != 0) manager.Uninitialize(ended);
}

void CDDEServer::HandleMessages(std::uint32_t milliseconds) {
  platform::GetDdeManager().HandleMessages(milliseconds);
}

CDDETopic* CDDEServer::FindTopic(const std::string& name) const {
  return topics_.Find(name);
}

CDDEConv* CDDEServer::FindConversation(DDEConversation conversation) const {
  return conversations_.Find(conversation);
}

void CDDEServer::AddConversation(DDEConversation conversation, const std::string& topic) {
  const DDEHolder<CDDEConv> added(new CDDEConv);
  added->handle_ = conversation;
  added->topic_ = topic;
  conversations_.Add(*added);
}

void CDDEServer::AddConversation(CDDEConv& conversation) {
  conversations_.Add(conversation);
}

int CDDEServer::RemoveConversation(DDEConversation conversation) {
  CDDEConv* const removed = FindConversation(conversation);
  if (removed == nullptr) return 0;
  removed->handle_ = DDEConversation::kNone;
  conversations_.Remove(*removed);
  return 1;
}

std::string CDDEServer::StringFromHsz(DDEString string) const {
  if (string == DDEString::kNone) return "<null>";
  std::string text;
  return platform::GetDdeManager().QueryString(instance_, string, &text) ? text : "<error>";
}

}  // namespace vemra
