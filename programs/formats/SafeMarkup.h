#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "programs/formats/HtmlElement.h"
#include "programs/formats/Markup.h"

// Which of a document's markup goes into a page that shows it. The page is safe to open whatever
// the document holds: it runs nothing, loads nothing, sends nothing and looks like no other part of
// the page that it may be put into.
namespace vemra {

// Elements are those for the structure and the look of text; anything else is left out, and its
// text stays. What would be a block of its own becomes a plain one.
//
// The name under which an element is written; empty when nothing is written of it.
std::string_view NameInPage(const HtmlElement& element);

// An attribute whose value holds no references any more.
struct PlainAttribute {
  std::string_view name;  // in any case
  std::string value;
};

// Whether an attribute of the element is written at all, so that its value is worth reading.
bool IsWrittenInPage(const HtmlElement& element, std::string_view attribute);

// Values beyond so many bytes are left out with their attributes: a link is written anew around
// each hit within it.
inline constexpr std::size_t kMaxAttribute = 300;

// The tag with which an element begins that is written. Only attributes of language, direction,
// layout of lists and tables, titles, links and their targets are kept. A link is kept when
// IsSafeLink, and its element is no link without one. Names within the document get the prefix
// "doc-", so that they are not those of the page around it.
MarkupTag MakeTag(const HtmlElement& element, const std::vector<PlainAttribute>& attributes);

// Whether an address only leads somewhere: a relative one, or one of the schemes http, https, ftp
// and mailto. Blanks and control characters do not hide a scheme.
bool IsSafeLink(std::string_view address);

}  // namespace vemra
