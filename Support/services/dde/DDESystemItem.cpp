#include "Support/services/dde/DDESystemItem.h"

#include <algorithm>
#include <vector>

#include "Support/services/dde/DDEServer.h"
#include "Support/services/dde/DDETopic.h"

namespace vemra {
namespace {

std::string Join(const std::vector<std::string>& parts) {
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) text += (i == 0 ? "" : "\t") + parts[i];
  return text;
}

template <typename List>
std::string JoinNames(const List& list) {
  std::vector<std::string> names;
  for (POSITION position = list.GetHeadPosition(); position != 0;)
    names.push_back(list.GetNext(position)->GetName());
  return Join(names);
}

}  // namespace

const std::uint16_t* CDDESystemItem::GetFormatList() const {
  static constexpr std::uint16_t kText[] = {kDDEFormatText, 0};
  return kText;
}

int CDDESystemItem::Request(std::uint16_t format, const void*& data, std::uint32_t& size) {
  if (IsSupportedFormat(format) == 0) return 0;
  answer_ = MakeAnswer();
  data = answer_.c_str();
  size = static_cast<std::uint32_t>(answer_.size() + 1);
  return 1;
}

int CDDESystemItem::CanAdvise(std::uint16_t /*format*/) {
  return 0;
}

std::string CDDESystemItem::MakeAnswer() const {
  return {};
}

std::string CDDESystemItem_TopicList::MakeAnswer() const {
  const CDDEServer* const server = GetTopic() == nullptr ? nullptr : GetTopic()->GetServer();
  return server == nullptr ? "" : JoinNames(server->GetTopics());
}

std::string CDDESystemItem_ItemList::MakeAnswer() const {
  return GetTopic() == nullptr ? "" : JoinNames(GetTopic()->GetItems());
}

std::string CDDESystemItem_FormatList::MakeAnswer() const {
  if (GetTopic() == nullptr) return {};
  std::vector<std::uint16_t> formats;
  const CDDEItemList& items = GetTopic()->GetItems();
  for (POSITION position = items.GetHeadPosition(); position != 0;) {
    for (const std::uint16_t* format = items.GetNext(position)->GetFormatList(); *format != 0;
         ++format) {
      if (std::find(formats.begin(), formats.end(), *format) == formats.end())
        formats.push_back(*format);
    }
  }
  std::vector<std::string> names;
  names.reserve(formats.size());
  for (const std::uint16_t format : formats) names.push_back(GetDDEFormatName(format));
  return Join(names);
}

}  // namespace vemra
