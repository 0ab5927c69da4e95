#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"

// <windows.h> makes GetMessage a macro. It is set aside here, and the class also answers to the
// names that the macro stands for, so that clients may include <windows.h> before or after.
#pragma push_macro("GetMessage")
#undef GetMessage

namespace vemra {

// What the typed settings throw.
class SUPPORT_API TavoINIException {
 public:
  // Takes the calling thread's last system error (see Errors.h) along.
  explicit TavoINIException(const std::string& text);
  TavoINIException(const TavoINIException& other);
  TavoINIException& operator=(const TavoINIException& other);
  virtual ~TavoINIException();

  // Always "No message for now": kept so because clients show it. The text that was given is in
  // the field.
  std::string GetMessage() const;
  std::string GetMessageA() const { return GetMessage(); }
  std::string GetMessageW() const { return GetMessage(); }

  std::string message;
  std::uint32_t errorCode;
};

}  // namespace vemra

#pragma pop_macro("GetMessage")
