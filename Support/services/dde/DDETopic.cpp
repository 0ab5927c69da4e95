#include "Support/services/dde/DDETopic.h"

#include "Support/platform/Dde.h"
#include "Support/services/dde/DDEName.h"
#include "Support/services/dde/DDEServer.h"
#include "Support/services/dde/HSZ.h"

namespace vemra {

int CDDETopic::Create(const std::string& name) {
  if (server_ != nullptr || !IsDDEName(name)) return 0;
  name_ = name;
  return 1;
}

int CDDETopic::AddItem(std::unique_ptr<CDDEItem> item) {
  CDDEItem* const added = item.get();
  if (items_.Add(std::move(item)) == 0) return 0;
  added->topic_ = this;
  return 1;
}

CDDEItem* CDDETopic::FindItem(const std::string& name) const {
  return items_.Find(name);
}

int CDDETopic::Request(std::uint16_t format, const std::string& item, const void*& data,
                       std::uint32_t& size) {
  CDDEItem* const asked = FindItem(item);
  if (asked != nullptr && asked->Request(format, data, size) != 0) return 1;
  return server_ == nullptr ? 0 : server_->Request(format, name_, item, data, size);
}

int CDDETopic::Poke(std::uint16_t format, const std::string& item, const void* data,
                    std::uint32_t size) {
  CDDEItem* const asked = FindItem(item);
  if (asked != nullptr && asked->Poke(format, data, size) != 0) return 1;
  return server_ == nullptr ? 0 : server_->Poke(format, name_, item, data, size);
}

int CDDETopic::Exec(const void* data, std::uint32_t size) {
  return server_ == nullptr ? 0 : server_->Exec(name_, data, size);
}

int CDDETopic::CanAdvise(std::uint16_t format, const std::string& item) {
  CDDEItem* const asked = FindItem(item);
  if (asked != nullptr && asked->CanAdvise(format) != 0) return 1;
  return server_ == nullptr ? 0 : server_->CanAdvise(format, name_, item);
}

int CDDETopic::PostAdvise(const std::string& item) {
  if (server_ == nullptr || server_->GetInstance() == 0) return 0;
  const CHSZ topicHandle(*server_, name_);
  const CHSZ itemHandle(*server_, item);
  // A null handle would mean all items.
  if (itemHandle == DDEString::kNone) return 0;
  return platform::GetDdeManager().PostAdvise(server_->GetInstance(), topicHandle, itemHandle) ? 1
                                                                                               : 0;
}

}  // namespace vemra
