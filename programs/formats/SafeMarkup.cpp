#include "programs/formats/SafeMarkup.h"

#include <algorithm>
#include <iterator>

#include "programs/formats/WhiteSpace.h"

namespace vemra {

namespace {

// In byte order.
constexpr std::string_view kElements[] = {
    "a",    "abbr",       "acronym", "address", "article", "aside",  "b",      "bdi",  "bdo",
    "big",  "blockquote", "br",      "caption", "center",  "cite",   "code",   "col",  "colgroup",
    "data", "dd",         "del",     "details", "dfn",     "dir",    "div",    "dl",   "dt",
    "em",   "figcaption", "figure",  "font",    "footer",  "h1",     "h2",     "h3",   "h4",
    "h5",   "h6",         "header",  "hgroup",  "hr",      "i",      "ins",    "kbd",  "li",
    "main", "mark",       "menu",    "nav",     "nobr",    "ol",     "p",      "pre",  "q",
    "s",    "samp",       "section", "small",   "span",    "strike", "strong", "sub",  "summary",
    "sup",  "table",      "tbody",   "td",      "tfoot",   "th",     "thead",  "time", "tr",
    "tt",   "u",          "ul",      "var",     "wbr"};
static_assert(std::is_sorted(std::begin(kElements), std::end(kElements)));

constexpr std::string_view kAttributes[] = {"abbr", "align",   "colspan", "dir",   "headers",
                                            "lang", "rowspan", "scope",   "start", "title",
                                            "type", "valign",  "value"};

constexpr std::string_view kLinkAttributes[] = {"href", "name"};
// Names within the document, which links lead to.
constexpr std::string_view kNameAttributes[] = {"id", "name"};
constexpr std::string_view kNamePrefix = "doc-";

constexpr std::string_view kSchemes[] = {"ftp", "http", "https", "mailto"};

template <std::size_t N>
bool IsIn(const std::string_view (&list)[N], std::string_view name) {
  return std::any_of(std::begin(list), std::end(list),
                     [name](std::string_view entry) { return EqualsNoCase(name, entry); });
}

bool IsKnownElement(std::string_view name) {
  return std::binary_search(std::begin(kElements), std::end(kElements), name);
}

// Addresses as readers of pages take them: blanks around them, and line ends and tabs within, do
// not count.
std::string WithoutControls(std::string_view address) {
  std::string clean;
  for (const char c : address) {
    if (static_cast<unsigned char>(c) > ' ' && c != 127) clean += c;
  }
  return clean;
}

void AppendAttribute(std::string_view name, std::string_view prefix, std::string_view value,
                     std::string& tag) {
  tag += ' ';
  for (const char c : name) tag += ToAsciiLower(c);
  tag += "=\"";
  tag += prefix;
  AppendEscaped(value, tag);
  tag += '"';
}

// A link's attribute; empty when the link is not kept.
std::string MakeLink(const std::string& value) {
  std::string text;
  const std::string address = WithoutControls(value);
  if (address.starts_with('#')) {
    AppendAttribute("href", "#" + std::string(kNamePrefix), address.substr(1), text);
  } else if (IsSafeLink(address)) {
    AppendAttribute("href", "", address, text);
  }
  return text;
}

std::string MakeAttribute(const PlainAttribute& attribute) {
  std::string text;
  if (IsIn(kNameAttributes, attribute.name)) {
    AppendAttribute("id", kNamePrefix, attribute.value, text);
  } else {
    AppendAttribute(attribute.name, "", attribute.value, text);
  }
  return text;
}

}  // namespace

std::string_view NameInPage(const HtmlElement& element) {
  if (IsKnownElement(element.name)) return element.name;
  const bool isBlock = element.boundary >= HtmlBoundary::kLine &&
                       element.content != HtmlContent::kNothing &&
                       (element.group & kGroupRoot) == 0;
  if (!isBlock) return {};
  return element.content == HtmlContent::kVerbatim ? "pre" : "div";
}

bool IsWrittenInPage(const HtmlElement& element, std::string_view attribute) {
  if (!IsKnownElement(element.name)) return false;
  if (element.name == "a" && IsIn(kLinkAttributes, attribute)) return true;
  return IsIn(kAttributes, attribute) || EqualsNoCase(attribute, "id");
}

MarkupTag MakeTag(const HtmlElement& element, const std::vector<PlainAttribute>& attributes) {
  std::string link;
  std::string others;
  for (const PlainAttribute& attribute : attributes) {
    const bool isKept =
        attribute.value.size() <= kMaxAttribute && IsWrittenInPage(element, attribute.name);
    if (!isKept) continue;
    if (!EqualsNoCase(attribute.name, "href")) {
      others += MakeAttribute(attribute);
    } else if (link.empty()) {
      link = MakeLink(attribute.value);
    }
  }
  MarkupTag tag;
  tag.isLink = !link.empty();
  const std::string name(element.name == "a" && !tag.isLink ? "span" : NameInPage(element));
  tag.text = '<' + name + link + others + '>';
  if (element.content == HtmlContent::kNothing) return tag;
  tag.kind = MarkupTag::kStart;
  tag.again = '<' + name + link + '>';
  tag.end = "</" + name + '>';
  if (element.boundary >= HtmlBoundary::kLine) tag.end += '\n';
  return tag;
}

bool IsSafeLink(std::string_view address) {
  const std::string clean = WithoutControls(address);
  const std::size_t end = clean.find_first_of(":/?#");
  if (end == std::string::npos || clean[end] != ':') return true;
  return IsIn(kSchemes, std::string_view(clean).substr(0, end));
}

}  // namespace vemra
