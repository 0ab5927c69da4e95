#include "Support/platform/FolderListing.h"

#include <windows.h>

#include <cstring>
#include <memory>

#include "Support/platform/win32/Identity.h"

namespace vemra::platform {
namespace {

// The search hands out its first entry at once; it waits here until it is asked for.
struct Search {
  HANDLE handle = INVALID_HANDLE_VALUE;  // stays so for a folder without any entry
  WIN32_FIND_DATAA data{};
  bool hasEntry = false;

  Search() = default;
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;
  ~Search() {
    if (handle != INVALID_HANDLE_VALUE) ::FindClose(handle);
  }
};

Search* AsSearch(std::intptr_t handle) {
  return reinterpret_cast<Search*>(handle);  // NOLINT(performance-no-int-to-ptr): came from one
}

bool IsDotName(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

bool Advance(Search& search) {
  search.hasEntry =
      search.handle != INVALID_HANDLE_VALUE && ::FindNextFileA(search.handle, &search.data) != 0;
  return search.hasEntry;
}

}  // namespace

bool FolderListing::Open(const std::string& path) {
  Close();
  auto search = std::make_unique<Search>();
  search->handle = ::FindFirstFileA((path + "\\*.*").c_str(), &search->data);
  search->hasEntry = search->handle != INVALID_HANDLE_VALUE;
  // A drive's root has no "." entry, so it may have no entry at all.
  if (!search->hasEntry && ::GetLastError() != ERROR_FILE_NOT_FOUND) return false;
  BY_HANDLE_FILE_INFORMATION information{};
  if (!ReadFileInformation(path + "\\", &information)) return false;
  identity_ = IdentityOf(information);
  handle_ = reinterpret_cast<std::intptr_t>(search.release());
  return true;
}

void FolderListing::Close() {
  delete AsSearch(handle_);
  handle_ = 0;
}

bool FolderListing::Next(FolderEntry* entry) {
  if (handle_ == 0) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return false;
  }
  Search& search = *AsSearch(handle_);
  while (search.hasEntry && IsDotName(search.data.cFileName)) Advance(search);
  if (!search.hasEntry) {
    ::SetLastError(ERROR_NO_MORE_FILES);
    return false;
  }
  entry->name = search.data.cFileName;
  entry->isFolder = (search.data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  entry->isLink = (search.data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  Advance(search);
  return true;
}

}  // namespace vemra::platform
