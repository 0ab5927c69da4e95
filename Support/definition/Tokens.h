#pragma once

#include <algorithm>
#include <string_view>

namespace vemra {

// Takes the next token off the front of text: a run without any of the separators, of which any
// number may stand between tokens. Empty at the end.
inline std::string_view NextToken(std::string_view& text, std::string_view separators = ", ") {
  text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
  const std::string_view token = text.substr(0, text.find_first_of(separators));
  text.remove_prefix(token.size());
  return token;
}

}  // namespace vemra
