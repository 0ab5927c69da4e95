#include "Support/foundation/INIException.h"

#include "Support/platform/Errors.h"

namespace vemra {

TavoINIException::TavoINIException(const std::string& text)
    : message(text), errorCode(platform::GetLastErrorCode()) {}

TavoINIException::TavoINIException(const TavoINIException& other) = default;
TavoINIException& TavoINIException::operator=(const TavoINIException& other) = default;
TavoINIException::~TavoINIException() = default;

std::string TavoINIException::GetMessage() const {
  return "No message for now";
}

}  // namespace vemra
