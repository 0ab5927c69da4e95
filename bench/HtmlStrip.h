#pragma once

#include <string>
#include <string_view>

namespace vemra::bench {

struct StrippedPage {
  std::string title;
  std::string body;
};

// What somebody would write in an afternoon to feed pages to a database: drops tags, comments,
// script and style, decodes the usual entities to UTF-8, breaks lines at block elements.
void StripHtml(std::string_view page, StrippedPage& out);

}  // namespace vemra::bench
