#include "Support/services/dde/DDEItem.h"

#include "Support/services/dde/DDEName.h"
#include "Support/services/dde/DDETopic.h"

namespace vemra {

int CDDEItem::Create(const std::string& name) {
  if (topic_ != nullptr || !IsDDEName(name)) return 0;
  name_ = name;
  return 1;
}

const std::uint16_t* CDDEItem::GetFormatList() const {
  static constexpr std::uint16_t kNone[] = {0};
  return kNone;
}

int CDDEItem::IsSupportedFormat(std::uint16_t format) const {
  const std::uint16_t* supported = GetFormatList();
  while (*supported != 0 && *supported != format) ++supported;
  return *supported == 0 ? 0 : 1;
}

int CDDEItem::Request(std::uint16_t /*format*/, const void*& /*data*/, std::uint32_t& /*size*/) {
  return 0;
}

int CDDEItem::Poke(std::uint16_t /*format*/, const void* /*data*/, std::uint32_t /*size*/) {
  return 0;
}

int CDDEItem::CanAdvise(std::uint16_t format) {
  return IsSupportedFormat(format);
}

int CDDEItem::PostAdvise() {
  return topic_ == nullptr ? 0 : topic_->PostAdvise(name_);
}

}  // namespace vemra
