#include "Support/definition/FileType.h"

#include <utility>

#include "Support/definition/DirScan.h"

namespace vemra {

struct CTavoFileType::Scan {
  int item = -1;          // the item being visited; -1 before the first
  bool inFolder = false;  // whether files of a folder item are being yielded
  CDirScan folder;
};

CTavoFileIDXitem* CTavoFileType::GetIDXitem(int index) const {
  return index >= 0 && index < GetNumOfIDXitems() ? items_[static_cast<std::size_t>(index)].get()
                                                  : nullptr;
}

void CTavoFileType::AddIDXitem(std::unique_ptr<CTavoFileIDXitem> item) {
  items_.push_back(std::move(item));
}

void CTavoFileType::AddIDXitem(int type, const std::string& name, int includeSubfolders,
                               const std::string& filters) {
  AddIDXitem(std::make_unique<CTavoFileIDXitem>(type, name, includeSubfolders, filters));
}

int CTavoFileType::DeleteIDXitem(int index) {
  if (GetIDXitem(index) == nullptr) return 0;
  items_.erase(items_.begin() + index);
  return 1;
}

POSITION CTavoFileType::GetStartPosition() const {
  return reinterpret_cast<POSITION>(new Scan);
}

int CTavoFileType::GetNextFilePath(POSITION& position, std::string& path) const {
  Scan* scan = reinterpret_cast<Scan*>(position);  // NOLINT(performance-no-int-to-ptr)
  if (scan == nullptr) return 0;
  for (;;) {
    if (scan->inFolder) {
      if (scan->folder.FindNextFile(path) != 0) return 1;
      scan->inFolder = false;
    }
    const CTavoFileIDXitem* item = GetIDXitem(++scan->item);
    if (item == nullptr) {
      CloseScan(position);
      return 0;
    }
    if (item->IsFolder() == 0) {
      path = item->GetName();
      return 1;
    }
    const std::string& filters = item->GetFilters();
    scan->folder.Scan(item->GetName(), filters.empty() ? defaultFilters_ : filters,
                      item->GetIncludeSubfolders());
    scan->inFolder = true;
  }
}

void CTavoFileType::CloseScan(POSITION& position) {
  delete reinterpret_cast<Scan*>(position);  // NOLINT(performance-no-int-to-ptr)
  position = 0;
}

}  // namespace vemra
