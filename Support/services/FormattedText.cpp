#include "Support/services/FormattedText.h"

#include <cstdio>

namespace vemra {

FormattedText::FormattedText(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(short_, sizeof short_, format, arguments);
  const std::size_t size = length < 0 ? 0 : static_cast<std::size_t>(length);
  if (size < sizeof short_) {
    text_ = {short_, size};
  } else {
    long_.resize(size);
    std::vsnprintf(long_.data(), size + 1, format, again);
    text_ = long_;
  }
  va_end(again);
}

}  // namespace vemra
