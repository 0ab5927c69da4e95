#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/definition/FileIDXitem.h"
#include "Support/foundation/Position.h"

namespace vemra {

// One type of the files that a database indexes, with the folders and files of that type. It owns
// its items. Used by one thread at a time.
class SUPPORT_API CTavoFileType {
 public:
  CTavoFileType() = default;
  explicit CTavoFileType(std::string name, std::string defaultFilters = {})
      : name_(std::move(name)), defaultFilters_(std::move(defaultFilters)) {}

  const std::string& GetName() const { return name_; }  // exact, case-sensitive
  void SetName(const std::string& name) { name_ = name; }
  // Patterns joined by ';' or ',' for the folders that have none of their own.
  const std::string& GetDefaultFilters() const { return defaultFilters_; }
  void SetDefaultFilters(const std::string& filters) { defaultFilters_ = filters; }
  // The file that CTavoFileINI::ReadFTD reads for this type, as stored.
  const std::string& GetFTDfileName() const { return ftdFileName_; }
  void SetFTDfileName(const std::string& name) { ftdFileName_ = name; }
  const std::string& GetFormat() const { return format_; }
  void SetFormat(const std::string& format) { format_ = format; }
  const std::string& GetLanguage() const { return language_; }
  void SetLanguage(const std::string& language) { language_ = language; }

  int GetNumOfIDXitems() const { return static_cast<int>(items_.size()); }
  CTavoFileIDXitem* GetIDXitem(int index) const;  // null out of range
  void AddIDXitem(std::unique_ptr<CTavoFileIDXitem> item);
  void AddIDXitem(int type, const std::string& name, int includeSubfolders = 0,
                  const std::string& filters = {});
  int DeleteIDXitem(int index);  // 0 out of range
  void DeleteAllIDXitems() { items_.clear(); }

  // Enumerates every file to index: items in their order, the files of a folder as CDirScan finds
  // them. The position holds memory and an open folder until GetNextFilePath has returned 0 or
  // CloseScan was called; the items must not change meanwhile.
  POSITION GetStartPosition() const;
  // Returns 0 at the end, with the position 0. A null position gives 0.
  int GetNextFilePath(POSITION& position, std::string& path) const;
  static void CloseScan(POSITION& position);

 private:
  struct Scan;

  std::string name_;
  std::string defaultFilters_;
  std::string format_;
  std::string language_;
  std::string ftdFileName_;
  std::vector<std::unique_ptr<CTavoFileIDXitem>> items_;
};

}  // namespace vemra
