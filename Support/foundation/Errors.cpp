#include "Support/foundation/Errors.h"

#include <cstdarg>
#include <cstdio>

#include "Support/platform/Errors.h"

namespace vemra {
namespace {

class Category : public std::error_category {
 public:
  const char* name() const noexcept override { return "system"; }
  std::string message(int code) const override {
    return platform::GetErrorText(static_cast<std::uint32_t>(code));
  }
};

}  // namespace

std::string GetErrorMessage(std::uint32_t code) {
  return platform::GetErrorText(code);
}

const std::error_category& SystemErrorCategory() {
  static const Category category;
  return category;
}

void DebugString(const char* format, ...) {
  char text[100];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  platform::WriteDebugOutput(text);
}

}  // namespace vemra
