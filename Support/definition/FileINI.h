#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Support/Export.h"
#include "Support/definition/BitArray.h"
#include "Support/definition/Field.h"
#include "Support/definition/FieldList.h"
#include "Support/definition/TitleItem.h"
#include "Support/foundation/Position.h"

namespace vemra {

class FieldPathCache;
class INIWorker;
class TavoSection;

// A special role that at most one field of a database holds.
enum class SpecialField { kAttribute, kTag, kGeneral, kLink, kId, kStatus };

// The field definitions of a text database (".ini"): up to 125 numbered fields and their special
// roles, the composition of document titles, and the statuses. It owns its fields and title items;
// pointers to them are loans that end when the item is removed, reset or loaded again.
// Used by one thread at a time: building a title and looking up element paths change it.
class SUPPORT_API CTavoFileINI {
 public:
  CTavoFileINI();
  CTavoFileINI(const CTavoFileINI&) = delete;
  CTavoFileINI& operator=(const CTavoFileINI&) = delete;
  ~CTavoFileINI();

  // Resets the object and fills it from the file; what is missing takes its default. Returns 1.
  int Load(const char* path);
  // Moves the general field to number 0 (other references to numbers stay as they are), then
  // writes the whole file anew. Kept: returns 0 only when there is a status field and the table of
  // statuses cannot be written; without one it returns 1 also when nothing was stored.
  int Save(const char* path);
  void Reset();

  // Fields.
  static bool IsValidFieldno(int fieldno) { return fieldno >= 0 && fieldno < kMaxFields; }
  // Adds under the field's own number, or the next free one when that is -1. Returns the stored
  // field, or null, the given one deleted, when the number is out of range or taken. The first role
  // among attribute, tag, general, ID, link, status that the field's rules name is taken from its
  // earlier holder; field 0 always gets the general flag.
  CTavoField* AddField(const CTavoField& field);
  CTavoField* AddField(std::unique_ptr<CTavoField> field);
  // Returns 0 when there is no such field.
  int RemoveField(int fieldno);
  int RemoveField(CTavoField* field);
  bool FieldExists(int fieldno) const { return GetField(fieldno) != nullptr; }
  int GetNumOfFields() const { return fieldCount_; }
  int GetHighestFieldno() const { return highestFieldno_; }  // the largest ever given to AddField
  const CTavoFieldList& GetDefinedFields() const { return defined_; }
  CTavoField* GetField(int fieldno) const;        // null when there is none
  CTavoField* GetField(const char* name) const;   // exact name; null when there is none
  std::string GetFieldName(int fieldno) const;    // empty when there is none
  std::uint32_t GetFieldRule(int fieldno) const;  // 0 when there is none
  // The defined fields in ascending number. GetNextPosition: the first number >= from.
  POSITION GetStartPosition() const { return GetNextPosition(0); }
  POSITION GetNextPosition(int from) const;
  CTavoField* GetNextField(POSITION& position) const;
  // The lowest number from the cursor up that is free, or -1. Number 0, the general field's, is
  // never handed out.
  int FindNextFreeFieldno();
  bool CanAddField() const { return freeCursor_ != -1; }
  // Moves a field to another number, swapping with the field that holds it.
  void ChangeFieldno(CTavoField* field, int fieldno);

  // Special roles. Each setter takes a field of this object, or null to leave the role empty. The
  // earlier holder loses the role's flag and its first title item.
  void SetGeneralField(CTavoField* field);
  void SetAttributeField(CTavoField* field);
  void SetTagField(CTavoField* field);
  void SetLinkField(CTavoField* field);
  void SetIDField(CTavoField* field);
  void SetStatusField(CTavoField* field);
  CTavoField* GetSpecialField(SpecialField slot) const {
    return special_[static_cast<std::size_t>(slot)];
  }
  bool IsGeneralField(const CTavoField* field) const {
    return field != nullptr && field == GetSpecialField(SpecialField::kGeneral);
  }
  int GetNumOfAltSortFields() const { return altSort_.GetTrueCount(); }
  int HasAltSort(int fieldno) const {
    // Unchecked: the register is one bit short of the last field number.
    return IsValidFieldno(fieldno) && altSort_[fieldno] != 0 ? 1 : 0;
  }

  // Sets of fields. The list with the "INDEX" lists of its fields added, one level deep.
  CTavoFieldList ExpandFieldList(const CTavoFieldList& list) const;
  // 1 when the list is not empty and each of its fields has at least one of the flags.
  int IsFieldRuleSet(const CTavoFieldList& list, std::uint32_t flags) const;
  // The lowest field number of the list whose field has at least one of the flags, or -1.
  int FindFirstField(const CTavoFieldList& list, std::uint32_t flags) const;
  // Sets result to the fields that the current file type's definitions give to an element path, or
  // to an attribute there, and returns it. A path seen before costs one hash look-up, until any
  // definition changes.
  CTavoFieldList& CheckFields(CTavoFieldList& result, std::string_view path);
  CTavoFieldList& CheckFields(CTavoFieldList& result, std::string_view path,
                              std::string_view attributeName);
  // Another number after every change, save that of the current file type, by which CheckFields may
  // come to answer otherwise: for those who keep its answers.
  std::uint64_t GetRevision() const { return revision_; }
  // Turns "name: value; ..." into "number:value;...". A query without ':' is returned as it is; a
  // segment without ':' gives an empty result. Kept: an unknown name discards what was built before
  // it. errors receives the query followed by one line for each unknown name, or nothing.
  std::string MapFieldsToFieldno(const std::string& query, std::string& errors);
  void BuildMapFieldsByName() const;

  // The definitions of one file type, kept in a file of their own.
  // ReadFTD returns 1 when any field found definitions.
  int ReadFTD(int fileType, const std::string& path, int clearFirst);
  int SaveFTD(int fileType, const std::string& path);  // 0 when a write fails
  // Removes the file type's entry from every field, so that higher file types move down. Returns 1.
  int DeleteFileTypeInfo(int fileType);
  void SetCurrentFTD(int fileType) { currentFileType_ = fileType; }
  int GetCurrentFTD() const { return currentFileType_; }

  // The composition of titles. Indices out of range give null, or do nothing.
  void AddTitleItem(std::unique_ptr<TavoTitleItem> item);
  int GetNumOfTitleItems() const { return static_cast<int>(titleItems_.size()); }
  TavoTitleItem* GetTitleItem(int index) const;
  void SetTitleItem(int index, std::unique_ptr<TavoTitleItem> item);
  void RemoveTitleItem(int index);
  void RemoveAllTitleItems();
  int GetTitlePos(int fieldno) const;  // the first item with the field, -1 if none
  void RemoveFromTitle(int fieldno);   // that item
  int GetMaxTitleLength() const { return maxTitleLength_; }
  void SetMaxTitleLength(int characters) { maxTitleLength_ = characters; }
  const std::string& GetSeparator() const { return titleSeparator_; }
  void SetSeparator(const std::string& separator) { titleSeparator_ = separator; }

  // The title of the document being parsed.
  void ClearTitles();
  void AddToTitle(int fieldno, TavoSection* section);
  std::string MakeTitle() const;
  // Cuts a stored title at the separators into the texts of the items. Returns 0 when there is no
  // separator or no item, or when a part is longer than its fixed item. Kept: a title with too few
  // separators gives one part fewer than there are items.
  int SplitTitle(const std::string& title, std::vector<std::string>& parts) const;

  // Statuses, counted from 0. Indices out of range give empty texts, or do nothing.
  int GetStatusesNumber() const { return static_cast<int>(statusNames_.size()); }
  std::string GetStatusName(int index) const;
  std::string GetStatusString(int index) const;
  std::string GetStatusPicture(int index) const;
  void AddStatus(const std::string& name, const std::string& string, const std::string& picture);
  // Kept: the string and the picture are appended to their arrays and the name array is left as it
  // is; only the maps point to the entry under its new name and string.
  void SetStatus(int index, const std::string& name, const std::string& string,
                 const std::string& picture);
  void SetStatusName(int index, const std::string& name);
  void SetStatusString(int index, const std::string& string);
  void SetStatusPicture(int index, const std::string& picture);
  // Kept: later entries move down while the maps go on giving their old indices.
  void RemoveStatus(int index);
  void ReplaceStatuses(int first, int second);             // swaps the two
  int GetStatusByString(const std::string& string) const;  // -1 when unknown
  int GetStatusByName(const std::string& name) const;      // -1 when unknown
  void RemoveStatusInfo();

 protected:
  void SetSpecialField(CTavoField* field, SpecialField slot, std::uint32_t flag);

 private:
  using StatusMap = std::unordered_map<std::string, int>;

  void Init();
  void LoadTitles(INIWorker& reader);
  void ComputeShares();
  void LoadStatuses(INIWorker& reader);
  void MakeGeneralFieldFirst();
  int SaveContents(INIWorker& writer) const;
  void SaveTitles(INIWorker& writer) const;
  int SaveStatuses(INIWorker& writer) const;
  bool HasStatuses() const { return GetSpecialField(SpecialField::kStatus) != nullptr; }
  bool IsStatus(int index) const { return index >= 0 && index < GetStatusesNumber(); }

  std::array<std::unique_ptr<CTavoField>, kMaxFields> fields_;
  CTavoFieldList defined_;
  std::array<CTavoField*, 6> special_{};
  int currentFileType_ = 0;
  int freeCursor_ = 1;  // where the search for a free number begins; -1 when all are taken
  int fieldCount_ = 0;
  int highestFieldno_ = 0;
  int maxTitleLength_ = 256;
  std::vector<std::unique_ptr<TavoTitleItem>> titleItems_;
  int titleUsedLength_ = 0;  // characters that the fixed items have taken of the current title
  std::string titleSeparator_ = "@";
  CTavoBitArray altSort_;
  mutable std::unordered_map<std::string, CTavoField*> fieldsByName_;  // built on first use
  StatusMap statusesByName_;
  StatusMap statusesByString_;
  std::vector<std::string> statusNames_;
  std::vector<std::string> statusStrings_;
  std::vector<std::string> statusPictures_;

  std::uint64_t revision_ = 0;  // counts every change that can move a path to other fields
  std::unique_ptr<FieldPathCache> pathCache_;
};

}  // namespace vemra
