// The composition of titles.

#include <algorithm>
#include <utility>

#include "Support/definition/FileINI.h"

namespace vemra {

void CTavoFileINI::AddTitleItem(std::unique_ptr<TavoTitleItem> item) {
  titleItems_.push_back(std::move(item));
}

TavoTitleItem* CTavoFileINI::GetTitleItem(int index) const {
  return index >= 0 && index < GetNumOfTitleItems()
             ? titleItems_[static_cast<std::size_t>(index)].get()
             : nullptr;
}

void CTavoFileINI::SetTitleItem(int index, std::unique_ptr<TavoTitleItem> item) {
  if (GetTitleItem(index) != nullptr)
    titleItems_[static_cast<std::size_t>(index)] = std::move(item);
}

void CTavoFileINI::RemoveTitleItem(int index) {
  if (GetTitleItem(index) != nullptr) titleItems_.erase(titleItems_.begin() + index);
}

void CTavoFileINI::RemoveAllTitleItems() {
  titleItems_.clear();
}

int CTavoFileINI::GetTitlePos(int fieldno) const {
  const auto found =
      std::find_if(titleItems_.begin(), titleItems_.end(),
                   [fieldno](const auto& item) { return item->GetFieldno() == fieldno; });
  return found == titleItems_.end() ? -1 : static_cast<int>(found - titleItems_.begin());
}

void CTavoFileINI::RemoveFromTitle(int fieldno) {
  RemoveTitleItem(GetTitlePos(fieldno));
}

void CTavoFileINI::ClearTitles() {
  for (const auto& item : titleItems_) item->ClearText();
  titleUsedLength_ = 0;
}

void CTavoFileINI::AddToTitle(int fieldno, TavoSection* section) {
  TavoTitleItem* item = GetTitleItem(GetTitlePos(fieldno));
  if (item == nullptr) return;
  const int added = item->AddSection(section, maxTitleLength_);
  if (!item->IsElastic()) titleUsedLength_ += added;
}

std::string CTavoFileINI::MakeTitle() const {
  std::string title;
  for (const auto& item : titleItems_) {
    if (item != titleItems_.front()) title += titleSeparator_;
    if (!item->IsElastic()) {
      title += item->GetText();
      continue;
    }
    const std::int64_t separators =
        static_cast<std::int64_t>((titleItems_.size() - 1) * titleSeparator_.size());
    const std::int64_t room = maxTitleLength_ - separators - titleUsedLength_;
    title.append(item->GetText(), 0, static_cast<std::size_t>(std::max<std::int64_t>(room, 0)));
  }
  return title;
}

int CTavoFileINI::SplitTitle(const std::string& title, std::vector<std::string>& parts) const {
  if (titleSeparator_.empty() || titleItems_.empty()) return 0;
  parts.clear();
  const std::size_t cuts = titleItems_.size() - 1;
  std::size_t start = 0;
  for (std::size_t i = 0; i < cuts; ++i) {
    const std::size_t found = title.find(titleSeparator_, start);
    if (found == std::string::npos) break;
    const TavoTitleItem& item = *titleItems_[i];
    const auto length = static_cast<std::int64_t>(found - start);
    if (!item.IsElastic() && length > item.GetMaxLength()) return 0;
    parts.push_back(title.substr(start, found - start));
    start = found + titleSeparator_.size();
  }
  parts.push_back(title.substr(start));
  if (parts.size() < cuts) parts.resize(cuts);
  return 1;
}

}  // namespace vemra
