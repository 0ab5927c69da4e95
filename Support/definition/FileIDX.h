#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Support/Export.h"
#include "Support/definition/FileType.h"

namespace vemra {

class CTavoProfileReader;
class INIWorker;

// The index list of a database (".idx"): its file types in order, each with the folders and files
// to index. The place of a file type in this order is the file type index of the field definitions
// and of the file dictionary. It owns its file types. Used by one thread at a time.
class SUPPORT_API CTavoFileIDX {
 public:
  CTavoFileIDX() = default;
  CTavoFileIDX(const CTavoFileIDX&) = delete;
  CTavoFileIDX& operator=(const CTavoFileIDX&) = delete;

  // Adds what the list holds to what is there: a known file type gets its default filters anew and
  // further items. Lines that are no items are skipped; a file type without a section of its own
  // keeps no items. Returns 0 when nothing is open. The form by path reads the file twice, so that
  // sections are found wherever they stand after "Files to Index".
  int Load(CTavoProfileReader& reader);
  int Load(const std::string& path);
  // Writes the whole list, with LF line ends when opened by path. Returns 0 when nothing is open or
  // a write fails.
  int Save(std::FILE* stream) const;
  int Save(const std::string& path) const;

  // The settings of the file types (name, definitions file, format, language) in a settings file:
  // their number in the worker's current section, each one in a section "FileType<n>" from 1. Both
  // leave the worker's section as it was and return 1, 0 when a write fails. Loading discards all
  // file types first. Kept: saving encloses names with a blank in double quotes, which loading does
  // not strip; the platform's profile calls do.
  int LoadFileTypes(INIWorker& reader);
  int SaveFileTypes(INIWorker& writer) const;

  int GetNumOfFileTypes() const { return static_cast<int>(fileTypes_.size()); }
  // The first file type added becomes current when none is. Returns its index.
  int AddFileType(std::unique_ptr<CTavoFileType> fileType);
  // Returns 0 out of range. Removing the current one makes none current.
  int RemoveFileType(int index);
  int FindFileType(const std::string& name) const;  // -1 when there is none
  CTavoFileType* GetFileType(int index) const;      // null out of range
  CTavoFileType* GetFileType() const { return current_; }
  int GetCurrentIndex() const { return currentIndex_; }
  void SetCurrentFileType(int index);  // out of range makes none current

  // On the current file type; without one they give empty values or 0, or do nothing.
  std::string GetFilters() const;
  void SetFilters(const std::string& filters);
  std::string GetFTDfileName() const;
  void SetFTDfileName(const std::string& name);
  int GetNumOfIDXitems() const;
  CTavoFileIDXitem* GetIDXitem(int index) const;
  void AddIDXitem(std::unique_ptr<CTavoFileIDXitem> item);
  int DeleteIDXitem(int index);
  void DeleteAllIDXitems();

  void Reset();    // Cleanup, then Init
  void Init();     // no file type is current
  void Cleanup();  // deletes every file type

 private:
  using FileTypesByName = std::unordered_map<std::string_view, CTavoFileType*>;

  FileTypesByName GetFileTypesByName() const;
  void ReadFileTypeLines(CTavoProfileReader& reader);
  void ReadItems(CTavoProfileReader& reader);

  std::vector<std::unique_ptr<CTavoFileType>> fileTypes_;
  CTavoFileType* current_ = nullptr;
  int currentIndex_ = -1;
};

}  // namespace vemra
