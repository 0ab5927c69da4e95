#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Export.h"
#include "Support/definition/Attribute.h"
#include "Support/definition/FieldList.h"
#include "Support/definition/FieldRule.h"
#include "Support/definition/Tag.h"

namespace vemra {

class INIWorker;

// One field of a text database: its number, names and rules, the fields that its text is also
// indexed into, and for each file type the element paths and attributes whose content belongs to
// it. File types are counted from 0 as in the index list; one beyond those defined has no
// definitions. Used by one thread at a time.
class SUPPORT_API CTavoField {
 public:
  static constexpr std::uint32_t kDefaultCharset = 0x04090409;

  CTavoField() = default;
  // Copies everything but the definitions per file type.
  CTavoField(const CTavoField& other);
  CTavoField& operator=(const CTavoField&) = delete;

  // Reads the section "FIELD<fieldno>" of the field definitions file. Returns 1 and sets every
  // member when it has a non-empty "NAME"; otherwise 0, and the field is unchanged.
  int Load(INIWorker& reader, int fieldno);
  // Writes the same section. Returns 1.
  int Save(INIWorker& writer) const;

  // The text of "FIELDRULES": keywords separated by commas or blanks.
  void ReadFieldRule(const std::string& text) { rules_ = ParseFieldRules(text); }
  std::string WriteFieldRule() const { return FormatFieldRules(rules_); }
  // The text of "INDEX": field numbers separated by commas or blanks; others are skipped.
  void ReadFieldList(const std::string& text);
  std::string WriteFieldList() const;

  const std::string& GetName() const { return name_; }
  // Does not change the title. The owning CTavoFileINI finds a renamed field by its new name only
  // after BuildMapFieldsByName.
  void SetName(const std::string& name) { name_ = name; }
  const std::string& GetTitle() const { return title_; }
  void SetTitle(const std::string& title) { title_ = title; }
  std::uint32_t GetFieldRule() const { return rules_; }
  void AddFieldRule(std::uint32_t flags) { rules_ |= flags; }
  void RemoveFieldRule(std::uint32_t flags) { rules_ &= ~flags; }
  // Whether at least one of the flags is set.
  bool HasFieldRule(std::uint32_t flags) const { return (rules_ & flags) != 0; }
  std::uint32_t GetCharset() const { return charset_; }
  void SetCharset(std::uint32_t charset) { charset_ = charset; }
  int GetFieldno() const { return fieldno_; }  // -1 until assigned
  // For fields that no CTavoFileINI owns; an owned one changes by CTavoFileINI::ChangeFieldno.
  void SetFieldno(int fieldno) { fieldno_ = fieldno; }
  int GetParentField() const { return parentField_; }  // -1 for none
  void SetParentField(int fieldno) { parentField_ = fieldno; }
  const CTavoFieldList& GetFieldList() const { return fieldList_; }
  void SetFieldList(const CTavoFieldList& list) { fieldList_ = list; }

  // Appends the definitions that the section "Field<number>" of a file type's definitions file
  // holds. Returns 1 when it gave any tag or attribute.
  int LoadFTD(INIWorker& reader, int fileType);
  // Writes that section. Returns 1, or 0 when a write fails.
  int SaveFTD(INIWorker& writer, int fileType) const;
  // Removes the file type's entry: the definitions of higher file types move down by one.
  void DeleteFTD(int fileType);
  // Empties the file type's definitions and keeps its entry.
  void DeleteTagsAndAttrs(int fileType);
  void DeleteTagsAndAttrs();  // of all file types

  int GetNumberOfTags(int fileType) const;
  std::string GetTag(int fileType, int index) const;  // the path, empty when absent
  int IfIgnoreParentFields(int fileType, int index) const;
  int IfAddToTagField(int fileType, int index) const;
  // The editing operations return 1, and 0 when the file type is negative or the index is out of
  // range (insertion allows the count itself).
  int AddTag(int fileType, const std::string& path, int ignoreParentFields = 0,
             int addToTagField = 0);
  int InsertTagAt(int fileType, int index, const std::string& path, int ignoreParentFields = 0,
                  int addToTagField = 0);
  int SetTagAt(int fileType, int index, const std::string& path, int ignoreParentFields = 0,
               int addToTagField = 0);
  int RemoveTag(int fileType, int index);

  int GetNumberOfAttributes(int fileType) const;
  int GetAttribPathAndName(int fileType, int index, std::string& path, std::string& name) const;
  int IfAddToAttributeField(int fileType, int index) const;
  int AddAttribute(int fileType, const std::string& path, const std::string& name,
                   int addToAttributeField = 0);
  int InsertAttributeAt(int fileType, int index, const std::string& path, const std::string& name,
                        int addToAttributeField = 0);
  int SetAttributeAt(int fileType, int index, const std::string& path, const std::string& name,
                     int addToAttributeField = 0);
  int RemoveAttribute(int fileType, int index);

  // 1 when any tag, or any attribute, of the file type is on at the element path.
  int IsFieldOn(int fileType, std::string_view path) const;
  int IsFieldOn(int fileType, std::string_view path, std::string_view attributeName) const;

 private:
  friend class CTavoFileINI;

  // Every change of a tag or an attribute passes here.
  void TagsChanged() {
    if (ownersRevision_ != nullptr) ++*ownersRevision_;
  }
  int TagsChangedIf(bool changed) {
    if (changed) TagsChanged();
    return changed ? 1 : 0;
  }

  std::string name_;
  std::string title_;
  std::uint32_t rules_ = 0;
  std::uint32_t charset_ = kDefaultCharset;
  int fieldno_ = -1;
  int parentField_ = -1;
  CTavoFieldList fieldList_;
  std::vector<std::vector<CTavoTag>> tags_;              // by file type
  std::vector<std::vector<CTavoAttribute>> attributes_;  // by file type
  std::uint64_t* ownersRevision_ = nullptr;              // the owner's count of tag changes, a loan
};

}  // namespace vemra
