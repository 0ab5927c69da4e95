#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "programs/formats/HtmlElement.h"

namespace vemra {

class MarkupStack;

// The elements that are open at a place of a page, and their path "<html><body><p>", by which the
// field definitions are asked. Tags may be missing, crossed or unmatched. Memory is bounded: the
// path names the outermost kMaxNamed elements, and beyond kMaxDepth none is opened.
class ElementPath {
 public:
  static constexpr std::size_t kMaxNamed = 100;
  static constexpr std::size_t kMaxDepth = 512;

  // markup, a loan or null, is told what ends; the owner of the path tells it what begins.
  explicit ElementPath(MarkupStack* markup = nullptr) : markup_(markup) {}

  const std::string& GetText() const { return text_; }
  // Of the names in it: other than that of most other paths.
  std::uint32_t GetHash() const { return open_.empty() ? 0 : open_.back().pathHash; }
  void Clear();

  // Ends the elements that a start tag of this element ends by being there.
  void EndImplied(const HtmlElement& element);
  // name is that of the tag, which for an unknown element is not in element, hash its HashName.
  // Returns whether the element has been opened.
  bool Open(const HtmlElement& element, std::string_view name, std::uint32_t hash);
  // Ends the nearest open element of a name with that hash, with those inside it; of an inline
  // element only itself, so that crossed tags end what they name. Does nothing when there is none
  // in reach: end tags do not reach out of a table cell, list or object.
  void Close(const HtmlElement& element, std::uint32_t hash);
  void CloseLast() { CutTo(open_.size() - 1); }

  bool IsOpen(const HtmlElement& element) const;
  // Whether white space is kept here.
  bool IsVerbatim() const { return !open_.empty() && open_.back().verbatim; }

 private:
  struct Entry {
    const HtmlElement* element;
    std::uint32_t hash;   // of the name, which tells unknown elements apart
    std::uint32_t start;  // of its part of the text
    bool verbatim;
    // Of this element and of those that it is in:
    std::uint16_t groups;
    std::uint32_t pathHash;
  };

  void CutTo(std::size_t depth);
  void Remove(std::size_t index);
  void Enclose(std::size_t index);

  MarkupStack* markup_;
  std::vector<Entry> open_;
  std::string text_;
};

}  // namespace vemra
