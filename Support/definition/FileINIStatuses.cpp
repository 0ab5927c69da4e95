// The table of statuses.

#include <utility>

#include "Support/definition/FileINI.h"

namespace vemra {
namespace {

// SetStatus lets the arrays differ in length, so each is asked for itself.
std::string At(const std::vector<std::string>& texts, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < texts.size()
             ? texts[static_cast<std::size_t>(index)]
             : std::string();
}

void Put(std::vector<std::string>& texts, int index, const std::string& text) {
  if (index >= 0 && static_cast<std::size_t>(index) < texts.size()) {
    texts[static_cast<std::size_t>(index)] = text;
  }
}

void Erase(std::vector<std::string>& texts, int index) {
  if (static_cast<std::size_t>(index) < texts.size()) texts.erase(texts.begin() + index);
}

void Swap(std::vector<std::string>& texts, int first, int second) {
  const auto a = static_cast<std::size_t>(first);
  const auto b = static_cast<std::size_t>(second);
  if (a < texts.size() && b < texts.size()) std::swap(texts[a], texts[b]);
}

void Map(std::unordered_map<std::string, int>& map, const std::string& text, int index) {
  if (!text.empty()) map[text] = index;
}

int Look(const std::unordered_map<std::string, int>& map, const std::string& text) {
  const auto found = map.find(text);
  return found == map.end() ? -1 : found->second;
}

}  // namespace

std::string CTavoFileINI::GetStatusName(int index) const {
  return At(statusNames_, index);
}
std::string CTavoFileINI::GetStatusString(int index) const {
  return At(statusStrings_, index);
}
std::string CTavoFileINI::GetStatusPicture(int index) const {
  return At(statusPictures_, index);
}

void CTavoFileINI::AddStatus(const std::string& name, const std::string& string,
                             const std::string& picture) {
  const int index = GetStatusesNumber();
  statusNames_.push_back(name);
  statusStrings_.push_back(string);
  statusPictures_.push_back(picture);
  Map(statusesByName_, name, index);
  Map(statusesByString_, string, index);
}

void CTavoFileINI::SetStatus(int index, const std::string& name, const std::string& string,
                             const std::string& picture) {
  if (!IsStatus(index)) return;
  statusesByName_.erase(GetStatusName(index));
  statusesByString_.erase(GetStatusString(index));
  statusStrings_.push_back(string);
  statusPictures_.push_back(picture);
  Map(statusesByName_, name, index);
  Map(statusesByString_, string, index);
}

void CTavoFileINI::SetStatusName(int index, const std::string& name) {
  if (!IsStatus(index)) return;
  statusesByName_.erase(GetStatusName(index));
  Put(statusNames_, index, name);
  Map(statusesByName_, name, index);
}

void CTavoFileINI::SetStatusString(int index, const std::string& string) {
  if (!IsStatus(index)) return;
  statusesByString_.erase(GetStatusString(index));
  Put(statusStrings_, index, string);
  Map(statusesByString_, string, index);
}

void CTavoFileINI::SetStatusPicture(int index, const std::string& picture) {
  Put(statusPictures_, index, picture);
}

void CTavoFileINI::RemoveStatus(int index) {
  if (!IsStatus(index)) return;
  statusesByName_.erase(GetStatusName(index));
  statusesByString_.erase(GetStatusString(index));
  Erase(statusNames_, index);
  Erase(statusStrings_, index);
  Erase(statusPictures_, index);
}

void CTavoFileINI::ReplaceStatuses(int first, int second) {
  if (!IsStatus(first) || !IsStatus(second)) return;
  Swap(statusNames_, first, second);
  Swap(statusStrings_, first, second);
  Swap(statusPictures_, first, second);
  for (const int index : {first, second}) {
    Map(statusesByName_, GetStatusName(index), index);
    Map(statusesByString_, GetStatusString(index), index);
  }
}

int CTavoFileINI::GetStatusByString(const std::string& string) const {
  return Look(statusesByString_, string);
}

int CTavoFileINI::GetStatusByName(const std::string& name) const {
  return Look(statusesByName_, name);
}

void CTavoFileINI::RemoveStatusInfo() {
  statusesByName_.clear();
  statusesByString_.clear();
  statusNames_.clear();
  statusStrings_.clear();
  statusPictures_.clear();
}

}  // namespace vemra
