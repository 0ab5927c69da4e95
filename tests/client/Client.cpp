// A client of the shared library. On Windows it is built with <windows.h> before and after the
// library's headers, whose names that header makes macros: both sides must stay usable.

#ifdef CLIENT_WINDOWS_FIRST
#include <windows.h>
#endif

#include "Support/definition/Definition.h"
#include "Support/foundation/Foundation.h"
#include "Support/foundation/INIWorker.h"
#include "Support/services/Services.h"

#ifdef CLIENT_WINDOWS_LAST
#include <windows.h>
#endif

#include <cstdio>
#include <string>
#include <system_error>

namespace {

int failures = 0;

void Check(bool holds, const char* what) {
  if (holds) return;
  std::printf("FAILED: %s\n", what);
  ++failures;
}

// Raised inside the library, caught here by its type.
void CatchAcrossTheBoundary() {
  vemra::INIWorker worker("Z:\\no-such-folder-here\\a.ini", 1);
  worker.SetSection("Section");
  std::string caught;
  std::string message;
  try {
    worker.PutNum("Key", 1);
  } catch (const vemra::TavoINIException& exception) {
    caught = exception.message;
    message = exception.GetMessage();
  }
  Check(!caught.empty(), "a failed write raises TavoINIException");
  Check(message == "No message for now", "GetMessage answers with its fixed text");
}

void CatchASystemError() {
  int code = 0;
  try {
    const vemra::TavoFile file("Z:\\no-such-folder-here\\a.txt", vemra::TavoFile::Access::kRead,
                               vemra::TavoFile::Creation::kOpenExisting);
  } catch (const std::system_error& error) {
    code = error.code().value();
    Check(error.code().category() == vemra::SystemErrorCategory(), "the category is one object");
  }
  Check(code == 3, "a missing folder is error 3");
}

void WalkAFolder() {
  vemra::CDirScan scan;
  scan.Scan(vemra::GetAppDirectory(), "*", 0);
  std::string path;
  Check(scan.FindNextFile(path) == 1, "FindNextFile finds the program itself");
}

void TakeAURLApart() {
  const vemra::TavoURL url("http://host/object?query");
  Check(url.GetObject() == "/object?query", "GetObject of a URL");
}

// The system's own functions of the same names.
void CallTheSystem() {
#if defined(CLIENT_WINDOWS_FIRST) || defined(CLIENT_WINDOWS_LAST)
  MSG message{};
  ::PostThreadMessage(::GetCurrentThreadId(), WM_APP, 0, 0);
  Check(::GetMessage(&message, nullptr, 0, 0) > 0 && message.message == WM_APP, "::GetMessage");
  WIN32_FIND_DATA data{};
  const HANDLE search = ::FindFirstFile(TEXT("Z:\\*"), &data);
  Check(search != INVALID_HANDLE_VALUE && ::FindNextFile(search, &data) != 0, "::FindNextFile");
  ::FindClose(search);
  BITMAP bitmap{};
  const HBITMAP handle = ::CreateBitmap(3, 2, 1, 1, nullptr);
  Check(::GetObject(handle, sizeof bitmap, &bitmap) != 0 && bitmap.bmWidth == 3, "::GetObject");
  ::DeleteObject(handle);
#endif
}

}  // namespace

int main() {
  CatchAcrossTheBoundary();
  CatchASystemError();
  WalkAFolder();
  TakeAURLApart();
  CallTheSystem();
  return failures == 0 ? 0 : 1;
}
