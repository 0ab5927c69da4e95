// Loading and saving the field definitions file.

#include <algorithm>
#include <string>
#include <utility>

#include "Support/definition/FileINI.h"
#include "Support/definition/StoredCount.h"
#include "Support/definition/StoredText.h"
#include "Support/foundation/INIWorker.h"

namespace vemra {
namespace {

int ToPercent(double share) {
  return static_cast<int>(std::clamp(share * 100, double{INT32_MIN}, double{INT32_MAX}));
}

}  // namespace

int CTavoFileINI::Load(const char* path) {
  Reset();
  INIWorker reader(path);
  const INIWorker::Batch snapshot(reader);  // reads the file once for all its keys
  for (int fieldno = 0; fieldno < kMaxFields; ++fieldno) {
    auto field = std::make_unique<CTavoField>();
    if (field->Load(reader, fieldno) != 0) AddField(std::move(field));
  }
  LoadTitles(reader);
  if (HasStatuses()) LoadStatuses(reader);
  return 1;
}

void CTavoFileINI::LoadTitles(INIWorker& reader) {
  reader.SetSection("Titles");
  reader.GetNum("Max. Length", maxTitleLength_, 256);
  if (maxTitleLength_ < 1) maxTitleLength_ = 256;
  reader.GetString("Separator", titleSeparator_);
  if (titleSeparator_.empty()) titleSeparator_ = "@";

  bool elasticSeen = false;
  const int count = ReadStoredCount(reader, "Items");
  for (int i = 1; i <= count; ++i) {
    reader.SetSection("Title Item " + std::to_string(i));
    int fieldno = 0;
    int maxLength = 0;
    if (reader.GetNum("Field", fieldno) == 0) continue;
    if (reader.GetNum("Max. Length", maxLength) == 0) continue;
    if (maxLength == 0) {
      if (elasticSeen) break;
      elasticSeen = true;
    }
    std::string separator;
    reader.GetString("Separator", separator);
    int addOnce = 0;
    reader.GetBoolean("Add Once", addOnce, 0);
    AddTitleItem(
        std::make_unique<TavoTitleItem>(fieldno, maxLength, std::move(separator), addOnce != 0));
  }
  ComputeShares();
}

void CTavoFileINI::ComputeShares() {
  double fixedLength = 0;
  bool hasElastic = false;
  for (const auto& item : titleItems_) {
    fixedLength += item->GetMaxLength();
    hasElastic = hasElastic || item->IsElastic();
  }
  const double width = hasElastic ? maxTitleLength_ : fixedLength;
  if (width == 0) return;
  for (const auto& item : titleItems_) {
    item->SetShare(
        ToPercent(item->IsElastic() ? 1 - fixedLength / width : item->GetMaxLength() / width));
  }
}

void CTavoFileINI::LoadStatuses(INIWorker& reader) {
  reader.SetSection("Status");
  const int count = ReadStoredCount(reader, "Number");
  for (int i = 0; i < count; ++i) {
    reader.SetSection("Status " + std::to_string(i));
    std::string name;
    std::string string;
    std::string picture;
    reader.GetString("Name", name);
    reader.GetString("String", string);
    reader.GetString("Picture", picture);
    // Unlike a status that is added later, a loaded one is found by an empty text too.
    statusesByName_[name] = i;
    statusesByString_[string] = i;
    statusNames_.push_back(std::move(name));
    statusStrings_.push_back(std::move(string));
    statusPictures_.push_back(std::move(picture));
  }
}

int CTavoFileINI::Save(const char* path) {
  MakeGeneralFieldFirst();
  INIWorker writer(path);
  INIWorker::Batch batch(writer);
  const bool isStored =
      writer.DeleteContents() != 0 && SaveContents(writer) != 0 && batch.Commit() != 0;
  return isStored || !HasStatuses() ? 1 : 0;
}

int CTavoFileINI::SaveContents(INIWorker& writer) const {
  for (POSITION position = GetStartPosition(); position != 0;) GetNextField(position)->Save(writer);
  SaveTitles(writer);
  return HasStatuses() ? SaveStatuses(writer) : 1;
}

void CTavoFileINI::MakeGeneralFieldFirst() {
  CTavoField* general = GetSpecialField(SpecialField::kGeneral);
  CTavoField* first = GetField(0);
  if (general != nullptr) {
    ChangeFieldno(general, 0);
  } else if (first != nullptr && !first->HasFieldRule(fieldrule::kGeneral) && CanAddField()) {
    ChangeFieldno(first, FindNextFreeFieldno());
  }
}

void CTavoFileINI::SaveTitles(INIWorker& writer) const {
  writer.SetSection("Titles");
  writer.PutNum("Max. Length", maxTitleLength_);
  PutText(writer, "Separator", titleSeparator_);
  writer.PutNum("Items", GetNumOfTitleItems());
  int number = 0;
  for (const auto& item : titleItems_) {
    writer.SetSection("Title Item " + std::to_string(++number));
    writer.PutNum("Field", item->GetFieldno());
    writer.PutNum("Max. Length", item->GetMaxLength());
    writer.PutBoolean("Add Once", item->IsAddOnce() ? 1 : 0);
    PutText(writer, "Separator", item->GetSeparator());
  }
}

int CTavoFileINI::SaveStatuses(INIWorker& writer) const {
  writer.SetSection("Status");
  if (writer.PutNum("Number", GetStatusesNumber()) == 0) return 0;
  for (int i = 0; i < GetStatusesNumber(); ++i) {
    writer.SetSection("Status " + std::to_string(i));
    if (PutText(writer, "Name", GetStatusName(i)) == 0 ||
        PutText(writer, "String", GetStatusString(i)) == 0 ||
        PutText(writer, "Picture", GetStatusPicture(i)) == 0) {
      return 0;
    }
  }
  return 1;
}

}  // namespace vemra
