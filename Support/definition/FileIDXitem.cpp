#include "Support/definition/FileIDXitem.h"

#include "Support/foundation/Strings.h"

namespace vemra {

int CTavoFileIDXitem::Read(const std::string& line) {
  const char* cursor = line.c_str();
  if (ReadType(cursor) == 0 || ReadName(cursor) == 0) return 0;
  includeSubfolders_ = 0;
  filters_.clear();
  if (IsFolder() != 0) ReadSub(cursor);
  return 1;
}

int CTavoFileIDXitem::ReadType(const char*& cursor) {
  if ((cursor[0] != 'D' && cursor[0] != 'F') || cursor[1] != ',') return 0;
  type_ = cursor[0] == 'D' ? kFolder : kFile;
  cursor += 2;
  return 1;
}

int CTavoFileIDXitem::ReadName(const char*& cursor) {
  name_ = ReadFileName(cursor);
  return name_.empty() ? 0 : 1;
}

void CTavoFileIDXitem::ReadSub(const char*& cursor) {
  const bool flag = cursor[0] == 'S' && (cursor[1] == ',' || cursor[1] == '\0');
  if (flag) {
    includeSubfolders_ = 1;
    ++cursor;
  }
  if (*cursor == ',') ++cursor;
  filters_ = cursor;
}

int CTavoFileIDXitem::Write(std::string& line) const {
  line = IsFolder() != 0 ? "D," : "F,";
  line += QuoteString(name_, ",");
  if (IsFolder() != 0 && (includeSubfolders_ != 0 || !filters_.empty())) {
    line += ',';
    if (includeSubfolders_ != 0) line += 'S';
    if (!filters_.empty()) line += ',' + filters_;
  }
  return 1;
}

}  // namespace vemra
