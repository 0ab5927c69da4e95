#include "programs/formats/HtmlElement.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace vemra {

namespace {

// A start tag ends nothing outside the cell, caption, table or object that it stands in.
constexpr std::uint16_t kScope = kGroupCell | kGroupTable | kGroupContainer;

// Nearly every start tag closes kGroupHead: what is not a head's own element ends a head whose end
// tag is missing.
// clang-format off
constexpr HtmlElement kElements[] = {
    {"a", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"abbr", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"acronym", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"address", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"applet", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupContainer, kGroupHead, kNoGroup},
    {"area", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"article", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"aside", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"b", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"base", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kNoGroup, kNoGroup},
    {"basefont", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"bdi", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"bdo", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"bgsound", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"big", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"blockquote", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"body", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupRoot, kGroupHead, kNoGroup},
    {"br", HtmlBoundary::kLineBreak, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"caption", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupRowGroup, kGroupRowGroup | kGroupRow | kGroupCell | kGroupHead, kGroupTable | kGroupContainer},
    {"center", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"cite", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"code", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"col", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"colgroup", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupRowGroup, kGroupRowGroup | kGroupRow | kGroupCell | kGroupHead, kGroupTable | kGroupContainer},
    {"data", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"dd", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupTerm, kGroupTerm | kGroupParagraph | kGroupHead, kScope | kGroupList},
    {"del", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"details", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"dfn", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"dialog", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"dir", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupList, kGroupParagraph | kGroupHead, kScope},
    {"div", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"dl", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupList, kGroupParagraph | kGroupHead, kScope},
    {"dt", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupTerm, kGroupTerm | kGroupParagraph | kGroupHead, kScope | kGroupList},
    {"em", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"embed", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"fieldset", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"figcaption", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"figure", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"font", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"footer", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"form", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"frame", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"frameset", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"h1", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupHeading, kGroupHeading | kGroupParagraph | kGroupHead, kScope},
    {"h2", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupHeading, kGroupHeading | kGroupParagraph | kGroupHead, kScope},
    {"h3", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupHeading, kGroupHeading | kGroupParagraph | kGroupHead, kScope},
    {"h4", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupHeading, kGroupHeading | kGroupParagraph | kGroupHead, kScope},
    {"h5", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupHeading, kGroupHeading | kGroupParagraph | kGroupHead, kScope},
    {"h6", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupHeading, kGroupHeading | kGroupParagraph | kGroupHead, kScope},
    {"head", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupHead, kNoGroup, kNoGroup},
    {"header", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"hgroup", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"hr", HtmlBoundary::kBlock, HtmlContent::kNothing, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"html", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupRoot, kNoGroup, kNoGroup},
    {"i", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"iframe", HtmlBoundary::kCut, HtmlContent::kNoText, kNoGroup, kGroupHead, kNoGroup},
    {"img", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"input", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"ins", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"kbd", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"keygen", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"legend", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"li", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupItem, kGroupItem | kGroupParagraph | kGroupHead, kScope | kGroupList},
    {"link", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kNoGroup, kNoGroup},
    {"listing", HtmlBoundary::kBlock, HtmlContent::kVerbatim, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"main", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"mark", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"marquee", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupContainer, kGroupHead, kNoGroup},
    {"menu", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupList, kGroupParagraph | kGroupHead, kScope},
    {"meta", HtmlBoundary::kLine, HtmlContent::kNothing, kNoGroup, kNoGroup, kNoGroup},
    {"nav", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"nobr", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"noembed", HtmlBoundary::kCut, HtmlContent::kNoText, kNoGroup, kGroupHead, kNoGroup},
    {"noframes", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"noscript", HtmlBoundary::kCut, HtmlContent::kMarkup, kNoGroup, kNoGroup, kNoGroup},
    {"object", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupContainer, kGroupHead, kNoGroup},
    {"ol", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupList, kGroupParagraph | kGroupHead, kScope},
    {"optgroup", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupOptionGroup, kGroupOptionGroup | kGroupOption | kGroupHead, kGroupSelect},
    {"option", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupOption, kGroupOption | kGroupHead, kGroupSelect},
    {"p", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupParagraph, kGroupParagraph | kGroupHead, kScope},
    {"param", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"pre", HtmlBoundary::kBlock, HtmlContent::kVerbatim, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"q", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"s", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"samp", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"script", HtmlBoundary::kCut, HtmlContent::kNoText, kNoGroup, kNoGroup, kNoGroup},
    {"search", HtmlBoundary::kBlock, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"section", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"select", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupSelect, kGroupHead, kNoGroup},
    {"small", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"source", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"span", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"strike", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"strong", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"style", HtmlBoundary::kCut, HtmlContent::kNoText, kNoGroup, kNoGroup, kNoGroup},
    {"sub", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"summary", HtmlBoundary::kLine, HtmlContent::kMarkup, kNoGroup, kGroupParagraph | kGroupHead, kScope},
    {"sup", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"table", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupTable, kGroupParagraph | kGroupHead, kScope},
    {"tbody", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupRowGroup, kGroupRowGroup | kGroupRow | kGroupCell | kGroupHead, kGroupTable | kGroupContainer},
    {"td", HtmlBoundary::kCell, HtmlContent::kMarkup, kGroupCell, kGroupCell | kGroupHead, kGroupTable | kGroupRow | kGroupContainer},
    {"template", HtmlBoundary::kCut, HtmlContent::kMarkup, kGroupContainer, kNoGroup, kNoGroup},
    {"textarea", HtmlBoundary::kLine, HtmlContent::kText, kNoGroup, kGroupHead, kNoGroup},
    {"tfoot", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupRowGroup, kGroupRowGroup | kGroupRow | kGroupCell | kGroupHead, kGroupTable | kGroupContainer},
    {"th", HtmlBoundary::kCell, HtmlContent::kMarkup, kGroupCell, kGroupCell | kGroupHead, kGroupTable | kGroupRow | kGroupContainer},
    {"thead", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupRowGroup, kGroupRowGroup | kGroupRow | kGroupCell | kGroupHead, kGroupTable | kGroupContainer},
    {"time", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"title", HtmlBoundary::kLine, HtmlContent::kText, kNoGroup, kNoGroup, kNoGroup},
    {"tr", HtmlBoundary::kLine, HtmlContent::kMarkup, kGroupRow, kGroupRow | kGroupCell | kGroupHead, kGroupTable | kGroupContainer},
    {"track", HtmlBoundary::kCut, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"tt", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"u", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"ul", HtmlBoundary::kBlock, HtmlContent::kMarkup, kGroupList, kGroupParagraph | kGroupHead, kScope},
    {"var", HtmlBoundary::kInline, HtmlContent::kMarkup, kNoGroup, kGroupHead, kNoGroup},
    {"wbr", HtmlBoundary::kInline, HtmlContent::kNothing, kNoGroup, kGroupHead, kNoGroup},
    {"xmp", HtmlBoundary::kBlock, HtmlContent::kVerbatim, kNoGroup, kGroupParagraph | kGroupHead, kScope},
};
// clang-format on

constexpr HtmlElement kUnknown = {"",       HtmlBoundary::kCut, HtmlContent::kMarkup,
                                  kNoGroup, kGroupHead,         kNoGroup};

// A table addressed by the hash of the name, since every tag of a document is looked up.
class ElementTable {
 public:
  constexpr ElementTable() {
    for (const HtmlElement& element : kElements) {
      std::size_t slot = HashName(element.name) % kSlots;
      while (slots_[slot] != nullptr) slot = (slot + 1) % kSlots;
      slots_[slot] = &element;
    }
  }

  const HtmlElement& Find(std::string_view name, std::uint32_t hash) const {
    for (std::size_t slot = hash % kSlots; slots_[slot] != nullptr; slot = (slot + 1) % kSlots) {
      if (slots_[slot]->name == name) return *slots_[slot];
    }
    return kUnknown;
  }

 private:
  static constexpr std::size_t kSlots = 512;
  static_assert(std::size(kElements) < kSlots / 2);

  std::array<const HtmlElement*, kSlots> slots_{};
};

constexpr ElementTable kTable;

}  // namespace

const HtmlElement& FindHtmlElement(std::string_view name, std::uint32_t hash) {
  return kTable.Find(name, hash);
}

}  // namespace vemra
