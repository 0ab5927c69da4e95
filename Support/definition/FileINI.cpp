#include "Support/definition/FileINI.h"

#include <algorithm>
#include <utility>

#include "Support/definition/FieldPathCache.h"
#include "Support/foundation/INIWorker.h"

namespace vemra {
namespace {

// Kept at the size that clients know, one short of the last field number; the storage holds them
// all.
constexpr std::int32_t kAltSortBits = 124;

struct Role {
  std::uint32_t flag;
  SpecialField slot;
};

// A field with several of the flags takes the first of these roles only.
constexpr Role kRoles[] = {
    {fieldrule::kAttribute, SpecialField::kAttribute}, {fieldrule::kTag, SpecialField::kTag},
    {fieldrule::kGeneral, SpecialField::kGeneral},     {fieldrule::kId, SpecialField::kId},
    {fieldrule::kLink, SpecialField::kLink},           {fieldrule::kStatus, SpecialField::kStatus},
};

}  // namespace

CTavoFileINI::CTavoFileINI()
    : altSort_(kAltSortBits, nullptr), pathCache_(std::make_unique<FieldPathCache>()) {}

CTavoFileINI::~CTavoFileINI() = default;

void CTavoFileINI::Reset() {
  for (auto& field : fields_) field.reset();
  defined_.Clear();
  altSort_.ResetAll();
  RemoveAllTitleItems();
  fieldsByName_.clear();
  RemoveStatusInfo();
  Init();
}

void CTavoFileINI::Init() {
  freeCursor_ = 1;
  fieldCount_ = 0;
  highestFieldno_ = 0;
  special_ = {};
  currentFileType_ = 0;
  maxTitleLength_ = 256;
  titleUsedLength_ = 0;
  titleSeparator_ = "@";
  ++revision_;
}

CTavoField* CTavoFileINI::AddField(const CTavoField& field) {
  return AddField(std::make_unique<CTavoField>(field));
}

CTavoField* CTavoFileINI::AddField(std::unique_ptr<CTavoField> field) {
  if (field->GetFieldno() == -1) field->SetFieldno(FindNextFreeFieldno());
  const int fieldno = field->GetFieldno();
  highestFieldno_ = std::max(highestFieldno_, fieldno);
  if (!IsValidFieldno(fieldno) || FieldExists(fieldno)) return nullptr;

  CTavoField* added = field.get();
  fields_[static_cast<std::size_t>(fieldno)] = std::move(field);
  defined_.Set(fieldno);
  ++fieldCount_;
  if (fieldno == 0) added->AddFieldRule(fieldrule::kGeneral);
  for (const Role& role : kRoles) {
    if (!added->HasFieldRule(role.flag)) continue;
    SetSpecialField(added, role.slot, role.flag);
    break;
  }
  altSort_.SetAt(fieldno, added->HasFieldRule(fieldrule::kAltSort) ? 1 : 0);
  fieldsByName_.clear();
  added->ownersRevision_ = &revision_;
  ++revision_;
  return added;
}

int CTavoFileINI::RemoveField(int fieldno) {
  CTavoField* field = GetField(fieldno);
  if (field == nullptr) return 0;
  std::replace(special_.begin(), special_.end(), field, static_cast<CTavoField*>(nullptr));
  fields_[static_cast<std::size_t>(fieldno)].reset();
  fieldsByName_.clear();
  RemoveFromTitle(fieldno);
  defined_.Reset(fieldno);
  altSort_.SetAt(fieldno, 0);
  --fieldCount_;
  // Number 0 belongs to the general field and is never handed out.
  if (fieldno != 0 && (freeCursor_ == -1 || fieldno < freeCursor_)) freeCursor_ = fieldno;
  ++revision_;
  return 1;
}

int CTavoFileINI::RemoveField(CTavoField* field) {
  if (field == nullptr || GetField(field->GetFieldno()) != field) return 0;
  return RemoveField(field->GetFieldno());
}

CTavoField* CTavoFileINI::GetField(int fieldno) const {
  return IsValidFieldno(fieldno) ? fields_[static_cast<std::size_t>(fieldno)].get() : nullptr;
}

CTavoField* CTavoFileINI::GetField(const char* name) const {
  if (fieldsByName_.empty()) BuildMapFieldsByName();
  const auto found = fieldsByName_.find(name);
  return found == fieldsByName_.end() ? nullptr : found->second;
}

void CTavoFileINI::BuildMapFieldsByName() const {
  fieldsByName_.clear();
  for (POSITION position = GetStartPosition(); position != 0;) {
    CTavoField* field = GetNextField(position);
    fieldsByName_[field->GetName()] = field;
  }
}

std::string CTavoFileINI::GetFieldName(int fieldno) const {
  const CTavoField* field = GetField(fieldno);
  return field == nullptr ? std::string() : field->GetName();
}

std::uint32_t CTavoFileINI::GetFieldRule(int fieldno) const {
  const CTavoField* field = GetField(fieldno);
  return field == nullptr ? 0 : field->GetFieldRule();
}

POSITION CTavoFileINI::GetNextPosition(int from) const {
  for (int fieldno = std::max(from, 0); fieldno < kMaxFields; ++fieldno) {
    if (FieldExists(fieldno)) return static_cast<POSITION>(fieldno) + 1;
  }
  return 0;
}

CTavoField* CTavoFileINI::GetNextField(POSITION& position) const {
  const int fieldno = static_cast<int>(position) - 1;
  position = GetNextPosition(fieldno + 1);
  return GetField(fieldno);
}

int CTavoFileINI::FindNextFreeFieldno() {
  if (freeCursor_ == -1) return -1;
  while (freeCursor_ < kMaxFields && FieldExists(freeCursor_)) ++freeCursor_;
  if (freeCursor_ == kMaxFields) freeCursor_ = -1;
  return freeCursor_;
}

void CTavoFileINI::ChangeFieldno(CTavoField* field, int fieldno) {
  const int old = field->GetFieldno();
  if (old == fieldno || !IsValidFieldno(fieldno) || GetField(old) != field) return;
  CTavoField* other = GetField(fieldno);
  std::swap(fields_[static_cast<std::size_t>(old)], fields_[static_cast<std::size_t>(fieldno)]);
  field->SetFieldno(fieldno);
  altSort_.SetAt(fieldno, field->HasFieldRule(fieldrule::kAltSort) ? 1 : 0);
  altSort_.SetAt(old, other != nullptr && other->HasFieldRule(fieldrule::kAltSort) ? 1 : 0);
  if (other != nullptr) {
    other->SetFieldno(old);
  } else {
    defined_.Set(fieldno);
    defined_.Reset(old);
    if (old != 0 && old < freeCursor_) freeCursor_ = old;
  }
  ++revision_;
}

void CTavoFileINI::SetSpecialField(CTavoField* field, SpecialField slot, std::uint32_t flag) {
  CTavoField*& holder = special_[static_cast<std::size_t>(slot)];
  if (holder != nullptr) {
    holder->RemoveFieldRule(flag);
    RemoveFromTitle(holder->GetFieldno());
  }
  if (field != nullptr) field->AddFieldRule(flag);
  holder = field;
}

void CTavoFileINI::SetGeneralField(CTavoField* field) {
  SetSpecialField(field, SpecialField::kGeneral, fieldrule::kGeneral);
}
void CTavoFileINI::SetAttributeField(CTavoField* field) {
  SetSpecialField(field, SpecialField::kAttribute, fieldrule::kAttribute);
}
void CTavoFileINI::SetTagField(CTavoField* field) {
  SetSpecialField(field, SpecialField::kTag, fieldrule::kTag);
}
void CTavoFileINI::SetLinkField(CTavoField* field) {
  SetSpecialField(field, SpecialField::kLink, fieldrule::kLink);
}
void CTavoFileINI::SetIDField(CTavoField* field) {
  SetSpecialField(field, SpecialField::kId, fieldrule::kId);
}
void CTavoFileINI::SetStatusField(CTavoField* field) {
  SetSpecialField(field, SpecialField::kStatus, fieldrule::kStatus);
}

CTavoFieldList CTavoFileINI::ExpandFieldList(const CTavoFieldList& list) const {
  CTavoFieldList result = list;
  for (POSITION position = list.GetStartPosition(); position != 0;) {
    const CTavoField* field = GetField(list.GetNextFieldno(position));
    if (field != nullptr) result |= field->GetFieldList();
  }
  return result;
}

int CTavoFileINI::IsFieldRuleSet(const CTavoFieldList& list, std::uint32_t flags) const {
  POSITION position = list.GetStartPosition();
  if (position == 0) return 0;
  while (position != 0) {
    if ((GetFieldRule(list.GetNextFieldno(position)) & flags) == 0) return 0;
  }
  return 1;
}

int CTavoFileINI::FindFirstField(const CTavoFieldList& list, std::uint32_t flags) const {
  for (POSITION position = list.GetStartPosition(); position != 0;) {
    const int fieldno = list.GetNextFieldno(position);
    if ((GetFieldRule(fieldno) & flags) != 0) return fieldno;
  }
  return -1;
}

CTavoFieldList& CTavoFileINI::CheckFields(CTavoFieldList& result, std::string_view path) {
  const FieldPathCache::Key key{currentFileType_, false, path, {}};
  if (const CTavoFieldList* known = pathCache_->Find(key, revision_)) return result = *known;
  result.Clear();
  for (POSITION position = GetStartPosition(); position != 0;) {
    const CTavoField* field = GetNextField(position);
    if (field->IsFieldOn(currentFileType_, path) != 0) result.Set(field->GetFieldno());
  }
  pathCache_->Add(key, result);
  return result;
}

CTavoFieldList& CTavoFileINI::CheckFields(CTavoFieldList& result, std::string_view path,
                                          std::string_view attributeName) {
  const FieldPathCache::Key key{currentFileType_, true, path, attributeName};
  if (const CTavoFieldList* known = pathCache_->Find(key, revision_)) return result = *known;
  result.Clear();
  for (POSITION position = GetStartPosition(); position != 0;) {
    const CTavoField* field = GetNextField(position);
    if (field->IsFieldOn(currentFileType_, path, attributeName) != 0) {
      result.Set(field->GetFieldno());
    }
  }
  pathCache_->Add(key, result);
  return result;
}

int CTavoFileINI::ReadFTD(int fileType, const std::string& path, int clearFirst) {
  INIWorker reader(path);
  const INIWorker::Batch snapshot(reader);  // reads the file once for all its keys
  int found = 0;
  for (POSITION position = GetStartPosition(); position != 0;) {
    CTavoField* field = GetNextField(position);
    if (clearFirst != 0) field->DeleteTagsAndAttrs(fileType);
    if (field->LoadFTD(reader, fileType) != 0) found = 1;
  }
  return found;
}

int CTavoFileINI::SaveFTD(int fileType, const std::string& path) {
  INIWorker writer(path);
  INIWorker::Batch batch(writer);
  for (POSITION position = GetStartPosition(); position != 0;) {
    if (GetNextField(position)->SaveFTD(writer, fileType) == 0) return 0;
  }
  return batch.Commit();
}

int CTavoFileINI::DeleteFileTypeInfo(int fileType) {
  for (const auto& field : fields_) {
    if (field != nullptr) field->DeleteFTD(fileType);
  }
  return 1;
}

}  // namespace vemra
