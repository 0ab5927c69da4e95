#include "Support/definition/Field.h"

#include <algorithm>
#include <charconv>

#include "Support/definition/StoredCount.h"
#include "Support/definition/StoredText.h"
#include "Support/definition/Tokens.h"
#include "Support/foundation/INIWorker.h"

namespace vemra {
namespace {

// A decimal number at the start of the text, as "%d" reads it; what follows it does not matter.
bool ReadNumber(std::string_view text, int& number) {
  text.remove_prefix(std::min(text.find_first_not_of("\t\n\v\f\r"), text.size()));
  const bool plus = text.starts_with('+');
  if (plus) text.remove_prefix(1);
  if (plus && text.starts_with('-')) return false;
  return std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc();
}

// What one file type defines; null when the file type has no entry.
template <class Item>
const std::vector<Item>* Find(const std::vector<std::vector<Item>>& byFileType, int fileType) {
  const auto index = static_cast<std::size_t>(fileType);
  return fileType >= 0 && index < byFileType.size() ? &byFileType[index] : nullptr;
}

template <class Item>
const Item* Find(const std::vector<std::vector<Item>>& byFileType, int fileType, int index) {
  const std::vector<Item>* items = Find(byFileType, fileType);
  const auto place = static_cast<std::size_t>(index);
  return items != nullptr && index >= 0 && place < items->size() ? &(*items)[place] : nullptr;
}

template <class Item>
int Count(const std::vector<std::vector<Item>>& byFileType, int fileType) {
  const std::vector<Item>* items = Find(byFileType, fileType);
  return items == nullptr ? 0 : static_cast<int>(items->size());
}

// The editing operations return whether they changed anything.
template <class Item>
bool Insert(std::vector<std::vector<Item>>& byFileType, int fileType, int index, Item item) {
  if (fileType < 0 || index < 0 || index > Count(byFileType, fileType)) return false;
  const auto entry = static_cast<std::size_t>(fileType);
  if (entry >= byFileType.size()) byFileType.resize(entry + 1);
  byFileType[entry].insert(byFileType[entry].begin() + index, std::move(item));
  return true;
}

template <class Item>
bool Replace(std::vector<std::vector<Item>>& byFileType, int fileType, int index, Item item) {
  if (Find(byFileType, fileType, index) == nullptr) return false;
  byFileType[static_cast<std::size_t>(fileType)][static_cast<std::size_t>(index)] = std::move(item);
  return true;
}

template <class Item>
bool Remove(std::vector<std::vector<Item>>& byFileType, int fileType, int index) {
  if (Find(byFileType, fileType, index) == nullptr) return false;
  std::vector<Item>& items = byFileType[static_cast<std::size_t>(fileType)];
  items.erase(items.begin() + index);
  return true;
}

template <class Item>
void RemoveEntry(std::vector<std::vector<Item>>& byFileType, int fileType) {
  if (Find(byFileType, fileType) != nullptr) byFileType.erase(byFileType.begin() + fileType);
}

template <class Item>
void ClearEntry(std::vector<std::vector<Item>>& byFileType, int fileType) {
  if (Find(byFileType, fileType) != nullptr) {
    byFileType[static_cast<std::size_t>(fileType)].clear();
  }
}

template <class Item>
bool LoadItems(INIWorker& reader, const char* countKey, std::vector<std::vector<Item>>& byFileType,
               int fileType) {
  const int count = ReadStoredCount(reader, countKey);
  for (int i = 1; i <= count; ++i) {
    Item item;
    item.Load(reader, i);
    Insert(byFileType, fileType, Count(byFileType, fileType), std::move(item));
  }
  return count > 0;
}

template <class Item>
int SaveItems(INIWorker& writer, const char* countKey,
              const std::vector<std::vector<Item>>& byFileType, int fileType) {
  const int count = Count(byFileType, fileType);
  if (writer.PutNum(countKey, count) == 0) return 0;
  for (int i = 0; i < count; ++i) {
    if (Find(byFileType, fileType, i)->Save(writer, i + 1) == 0) return 0;
  }
  return 1;
}

}  // namespace

CTavoField::CTavoField(const CTavoField& other)
    : name_(other.name_),
      title_(other.title_),
      rules_(other.rules_),
      charset_(other.charset_),
      fieldno_(other.fieldno_),
      parentField_(other.parentField_),
      fieldList_(other.fieldList_) {}

int CTavoField::Load(INIWorker& reader, int fieldno) {
  reader.SetSection("FIELD" + std::to_string(fieldno));
  std::string name;
  if (reader.GetString("NAME", name) == 0) return 0;
  name_ = name;
  fieldno_ = fieldno;
  reader.GetStringWithDefault("TITLE", title_, name_);
  int charset = 0;
  reader.GetNum("CHARSET", charset, static_cast<int>(kDefaultCharset));
  charset_ = static_cast<std::uint32_t>(charset);
  std::string text;
  reader.GetWholeString("FIELDRULES", text);
  ReadFieldRule(text);
  reader.GetWholeString("INDEX", text);
  ReadFieldList(text);
  reader.GetNum("Parent Field", parentField_, -1);
  return 1;
}

int CTavoField::Save(INIWorker& writer) const {
  writer.SetSection("FIELD" + std::to_string(fieldno_));
  PutText(writer, "NAME", name_);
  if (title_ != name_) PutText(writer, "TITLE", title_);
  writer.PutString("FIELDRULES", WriteFieldRule());
  if (fieldList_.IsEmpty() == 0) writer.PutString("INDEX", WriteFieldList());
  if (parentField_ != -1) writer.PutNum("Parent Field", parentField_);
  writer.PutNum("CHARSET", static_cast<int>(charset_));
  return 1;
}

void CTavoField::ReadFieldList(const std::string& text) {
  fieldList_.Clear();
  std::string_view rest = text;
  for (std::string_view token = NextToken(rest); !token.empty(); token = NextToken(rest)) {
    int fieldno = 0;
    if (ReadNumber(token, fieldno) && fieldno >= 0 && fieldno < kMaxFields) {
      fieldList_.Set(fieldno);
    }
  }
}

std::string CTavoField::WriteFieldList() const {
  std::string text;
  for (POSITION position = fieldList_.GetStartPosition(); position != 0;) {
    if (!text.empty()) text += ',';
    text += std::to_string(fieldList_.GetNextFieldno(position));
  }
  return text;
}

int CTavoField::LoadFTD(INIWorker& reader, int fileType) {
  reader.SetSection("Field" + std::to_string(fieldno_));
  const bool tags = LoadItems(reader, "Tag Number", tags_, fileType);
  const bool attributes = LoadItems(reader, "Attribute Number", attributes_, fileType);
  TagsChanged();
  return tags || attributes ? 1 : 0;
}

int CTavoField::SaveFTD(INIWorker& writer, int fileType) const {
  writer.SetSection("Field" + std::to_string(fieldno_));
  return SaveItems(writer, "Tag Number", tags_, fileType) != 0 &&
                 SaveItems(writer, "Attribute Number", attributes_, fileType) != 0
             ? 1
             : 0;
}

void CTavoField::DeleteFTD(int fileType) {
  RemoveEntry(tags_, fileType);
  RemoveEntry(attributes_, fileType);
  TagsChanged();
}

void CTavoField::DeleteTagsAndAttrs(int fileType) {
  ClearEntry(tags_, fileType);
  ClearEntry(attributes_, fileType);
  TagsChanged();
}

void CTavoField::DeleteTagsAndAttrs() {
  tags_.clear();
  attributes_.clear();
  TagsChanged();
}

int CTavoField::GetNumberOfTags(int fileType) const {
  return Count(tags_, fileType);
}

std::string CTavoField::GetTag(int fileType, int index) const {
  const CTavoTag* tag = Find(tags_, fileType, index);
  return tag == nullptr ? std::string() : tag->GetTagPath();
}

int CTavoField::IfIgnoreParentFields(int fileType, int index) const {
  const CTavoTag* tag = Find(tags_, fileType, index);
  return tag == nullptr ? 0 : tag->GetIgnoreParentFields();
}

int CTavoField::IfAddToTagField(int fileType, int index) const {
  const CTavoTag* tag = Find(tags_, fileType, index);
  return tag == nullptr ? 0 : tag->GetAddToTagField();
}

int CTavoField::AddTag(int fileType, const std::string& path, int ignoreParentFields,
                       int addToTagField) {
  return InsertTagAt(fileType, GetNumberOfTags(fileType), path, ignoreParentFields, addToTagField);
}

int CTavoField::InsertTagAt(int fileType, int index, const std::string& path,
                            int ignoreParentFields, int addToTagField) {
  return TagsChangedIf(
      Insert(tags_, fileType, index, CTavoTag(path, ignoreParentFields, addToTagField)));
}

int CTavoField::SetTagAt(int fileType, int index, const std::string& path, int ignoreParentFields,
                         int addToTagField) {
  return TagsChangedIf(
      Replace(tags_, fileType, index, CTavoTag(path, ignoreParentFields, addToTagField)));
}

int CTavoField::RemoveTag(int fileType, int index) {
  return TagsChangedIf(Remove(tags_, fileType, index));
}

int CTavoField::GetNumberOfAttributes(int fileType) const {
  return Count(attributes_, fileType);
}

int CTavoField::GetAttribPathAndName(int fileType, int index, std::string& path,
                                     std::string& name) const {
  const CTavoAttribute* attribute = Find(attributes_, fileType, index);
  if (attribute == nullptr) return 0;
  path = attribute->GetTagPath();
  name = attribute->GetAttributeName();
  return 1;
}

int CTavoField::IfAddToAttributeField(int fileType, int index) const {
  const CTavoAttribute* attribute = Find(attributes_, fileType, index);
  return attribute == nullptr ? 0 : attribute->GetAddToAttributeField();
}

int CTavoField::AddAttribute(int fileType, const std::string& path, const std::string& name,
                             int addToAttributeField) {
  return InsertAttributeAt(fileType, GetNumberOfAttributes(fileType), path, name,
                           addToAttributeField);
}

int CTavoField::InsertAttributeAt(int fileType, int index, const std::string& path,
                                  const std::string& name, int addToAttributeField) {
  return TagsChangedIf(
      Insert(attributes_, fileType, index, CTavoAttribute(path, name, addToAttributeField)));
}

int CTavoField::SetAttributeAt(int fileType, int index, const std::string& path,
                               const std::string& name, int addToAttributeField) {
  return TagsChangedIf(
      Replace(attributes_, fileType, index, CTavoAttribute(path, name, addToAttributeField)));
}

int CTavoField::RemoveAttribute(int fileType, int index) {
  return TagsChangedIf(Remove(attributes_, fileType, index));
}

int CTavoField::IsFieldOn(int fileType, std::string_view path) const {
  const std::vector<CTavoTag>* tags = Find(tags_, fileType);
  if (tags == nullptr) return 0;
  return std::any_of(tags->begin(), tags->end(),
                     [&](const CTavoTag& tag) { return tag.IsTagOn(path) != 0; })
             ? 1
             : 0;
}

int CTavoField::IsFieldOn(int fileType, std::string_view path,
                          std::string_view attributeName) const {
  const std::vector<CTavoAttribute>* attributes = Find(attributes_, fileType);
  if (attributes == nullptr) return 0;
  return std::any_of(attributes->begin(), attributes->end(),
                     [&](const CTavoAttribute& attribute) {
                       return attribute.IsAttributeOn(path, attributeName) != 0;
                     })
             ? 1
             : 0;
}

}  // namespace vemra
