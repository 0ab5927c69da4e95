#pragma once

#include <cstdint>
#include <string_view>

namespace vemra {

// What a tag does to the text around it. All but kInline end a run; from kCell on they also end a
// paragraph.
enum class HtmlBoundary : std::uint8_t {
  kInline,     // nothing: words go on
  kCut,        // the run ends
  kLineBreak,  // a new line of the same paragraph; two in a row make a paragraph
  kCell,       // a table cell
  kLine,       // a block on lines of its own
  kBlock,      // a block with a blank line around it
};

// What an element contains.
enum class HtmlContent : std::uint8_t {
  kMarkup,
  kNothing,   // no end tag
  kText,      // text and character references only, up to the end tag
  kNoText,    // anything up to the end tag, none of it text of the page
  kVerbatim,  // markup whose white space and lines are kept
};

// Sets of elements that end each other or hold each other together.
enum HtmlGroup : std::uint16_t {
  kNoGroup = 0,
  kGroupHead = 1 << 0,
  kGroupParagraph = 1 << 1,
  kGroupHeading = 1 << 2,
  kGroupList = 1 << 3,
  kGroupItem = 1 << 4,
  kGroupTerm = 1 << 5,  // dt and dd
  kGroupTable = 1 << 6,
  kGroupRowGroup = 1 << 7,
  kGroupRow = 1 << 8,
  kGroupCell = 1 << 9,
  kGroupSelect = 1 << 10,
  kGroupOption = 1 << 11,
  kGroupOptionGroup = 1 << 12,
  kGroupContainer = 1 << 13,  // a document inside the document, such as an object
  kGroupRoot = 1 << 14,       // html and body: once, and open to the end
};

// What the parser knows of an element.
struct HtmlElement {
  std::string_view name;  // lower case; empty for elements that are not known
  HtmlBoundary boundary;
  HtmlContent content;
  std::uint16_t group;   // HtmlGroup bits: where the element belongs
  std::uint16_t closes;  // the groups whose open elements its start tag ends ...
  std::uint16_t within;  // ... up to the nearest element of these groups
};

// The hash of a lower-case name (FNV-1a), by which elements are found and told apart: that of no
// character, that with one more, that of a whole name.
inline constexpr std::uint32_t kNameHashStart = 2166136261U;
constexpr std::uint32_t AddToNameHash(std::uint32_t hash, char c) {
  return (hash ^ static_cast<unsigned char>(c)) * 16777619U;
}
constexpr std::uint32_t HashName(std::string_view name) {
  std::uint32_t hash = kNameHashStart;
  for (const char c : name) hash = AddToNameHash(hash, c);
  return hash;
}

// The element of a lower-case name and its hash; one without a name, which only cuts, for any
// other.
const HtmlElement& FindHtmlElement(std::string_view name, std::uint32_t hash);

}  // namespace vemra
