#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

#include "Support/Export.h"

namespace vemra {

// A message by the rules of printf. One of up to 499 bytes costs no allocation. Empty when the
// format is wrong.
class FormattedText {
 public:
  // The caller starts and ends the arguments; they are used up.
  FormattedText(const char* format, std::va_list arguments) SUPPORT_PRINTF(2, 0);
  FormattedText(const FormattedText&) = delete;
  FormattedText& operator=(const FormattedText&) = delete;

  std::string_view Get() const { return text_; }

 private:
  char short_[500];
  std::string long_;
  std::string_view text_;  // of one of them
};

}  // namespace vemra
