#include "Support/services/dde/DDEStringItem.h"

#include "Support/services/dde/DDEText.h"

namespace vemra {

CDDEStringItem::CDDEStringItem(const std::string& name, const std::string& text)
    : CDDEItem(name), text_(GetDDEText(text.data(), text.size())) {}

void CDDEStringItem::SetData(const std::string& text) {
  text_ = GetDDEText(text.data(), text.size());
  PostAdvise();
}

const std::uint16_t* CDDEStringItem::GetFormatList() const {
  static constexpr std::uint16_t kText[] = {kDDEFormatText, 0};
  return kText;
}

int CDDEStringItem::Request(std::uint16_t format, const void*& data, std::uint32_t& size) {
  if (IsSupportedFormat(format) == 0) return 0;
  data = text_.c_str();
  size = static_cast<std::uint32_t>(text_.size() + 1);
  return 1;
}

// Without telling those who watch: whoever passes the poke on does.
int CDDEStringItem::Poke(std::uint16_t format, const void* data, std::uint32_t size) {
  if (IsSupportedFormat(format) == 0) return 0;
  text_ = GetDDEText(data, size);
  return 1;
}

}  // namespace vemra
