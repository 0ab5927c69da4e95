#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vemra {

// A tag that is written to a page.
struct MarkupTag {
  enum Kind { kAlone, kStart, kEnd };

  Kind kind = kAlone;
  std::string text;
  // Of a start tag: the tag with which its element goes on after an interruption, short since that
  // may happen often, and the end tag.
  std::string again;
  std::string end;
  bool isLink = false;
};

// The link of a document that text of its page stands in: its tag and those opened within it.
// Follows what is written, which is well nested.
class OpenLink {
 public:
  void Follow(const MarkupTag& tag);
  int GetDepth() const { return static_cast<int>(tags_.size()); }  // 0 outside of links
  // The link ends, and goes on.
  void AppendEnd(std::string& out) const;
  void AppendAgain(std::string& out) const;

 private:
  struct Tag {
    std::string again;
    std::string end;
  };

  std::vector<Tag> tags_;
};

// The tags that stand within a section's text, and the link that its beginning stands in.
struct SectionMarkup {
  struct Place {
    std::size_t offset;  // bytes of the text before the tag
    MarkupTag tag;
  };

  OpenLink link;
  std::vector<Place> tags;  // by offset
};

// Appends text that is no markup, so that no parser of pages sees any in it, also within quotes.
void AppendEscaped(std::string_view text, std::string& out);

}  // namespace vemra
