#pragma once

#include <string>
#include <utility>

#include "Support/Export.h"

namespace vemra {

// One line of the index list: a folder or a single file to index.
//
//   D,c:\docs,S,*.htm;*.html     a folder with its subfolders and file name patterns
//   D,c:\notes                   a folder
//   F,"c:\a, b.txt"              a file; a name with a comma stands in double quotes
class SUPPORT_API CTavoFileIDXitem {
 public:
  static constexpr int kFile = 0;
  static constexpr int kFolder = 1;

  CTavoFileIDXitem() = default;
  explicit CTavoFileIDXitem(int type, std::string name, int includeSubfolders = 0,
                            std::string filters = {})
      : type_(type),
        name_(std::move(name)),
        includeSubfolders_(includeSubfolders),
        filters_(std::move(filters)) {}

  // Parses a line. Returns 0 when it is no item line; the item is then unspecified.
  int Read(const std::string& line);
  // The line, without a line end. Returns 1.
  int Write(std::string& line) const;

  // The steps of Read. Each reads its part and moves the cursor past it.
  int ReadType(const char*& cursor);  // 0 unless "D," or "F,"
  int ReadName(const char*& cursor);  // 0 for an empty name
  // A folder's ",S" flag, taken only where a comma or the end follows; then the filters begin.
  void ReadSub(const char*& cursor);

  int GetType() const { return type_; }
  void SetType(int type) { type_ = type; }
  int IsFolder() const { return type_ == kFolder ? 1 : 0; }
  const std::string& GetName() const { return name_; }
  void SetName(const std::string& name) { name_ = name; }
  // Of folders only.
  int GetIncludeSubfolders() const { return includeSubfolders_; }
  void SetIncludeSubfolders(int flag) { includeSubfolders_ = flag; }
  // Patterns joined by ';' or ','; empty stands for the file type's default filters.
  const std::string& GetFilters() const { return filters_; }
  void SetFilters(const std::string& filters) { filters_ = filters; }

 private:
  int type_ = kFile;
  std::string name_;
  int includeSubfolders_ = 0;
  std::string filters_;
};

}  // namespace vemra
