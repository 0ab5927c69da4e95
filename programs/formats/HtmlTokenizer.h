#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vemra {

// As in the document: the name in its own case, the value without its quotes, references unread.
struct HtmlAttribute {
  std::string_view name;
  std::string_view value;
};

struct HtmlToken {
  enum Kind { kText, kStartTag, kEndTag, kEnd };

  Kind kind;
  std::string_view text;        // of text: as in the document; of a tag: its name in lower case
  std::uint32_t nameHash = 0;   // of a tag: HashName of that
  bool isEmptyElement = false;  // a start tag that ends with "/>"
};

// Whether more of them may follow.
struct HtmlQuotesLeft {
  bool hasQuote = true;
  bool hasApostrophe = true;
};

// Cuts a page into text and tags. Comments, document types, processing instructions and CDATA
// sections are skipped. Every byte is accepted: a "<" that begins no tag is text. Takes linear time
// and copies nothing but tag names.
class HtmlTokenizer {
 public:
  // Bytes of a tag's name; what is beyond is dropped.
  static constexpr std::size_t kMaxName = 64;

  // page is a loan for the life of the tokenizer and what it hands out.
  explicit HtmlTokenizer(std::string_view page);

  // A tag's name is valid until the next call, text as long as the page.
  HtmlToken Next();
  // Of the last start tag, in order.
  const std::vector<HtmlAttribute>& GetAttributes() const { return attributes_; }

  // After the start tag of an element without markup inside: its content. The end tag comes next.
  // Without an end tag the result has no data, and nothing is taken. name is a literal.
  std::string_view TakeContent(std::string_view name);
  // Takes the rest of the page.
  void TakeRest() { position_ = page_.size(); }

 private:
  char At(std::size_t position) const { return position < page_.size() ? page_[position] : '\0'; }
  bool IsMarkup(std::size_t position) const;
  HtmlToken TakeText();
  HtmlToken TakeTag();
  void SkipMarkup();
  void SkipComment();
  void SkipData();
  void SkipPast(std::string_view terminator);
  void TakeName();
  bool TakeAttributes();
  bool IsContentEnd(std::size_t position, std::string_view name) const;

  std::string_view page_;
  std::size_t position_ = 0;
  std::size_t tagsEnd_;  // after the last ">": a tag that begins beyond has no end
  std::array<char, kMaxName> name_{};
  std::size_t nameLength_ = 0;
  std::uint32_t nameHash_ = 0;
  std::vector<HtmlAttribute> attributes_;
  std::vector<std::string_view> unclosed_;  // names for which no end tag is left
  // Whether one may be left: of each the absence is found out once, so that a page full of what
  // lacks its end takes no more than linear time.
  bool hasDataEnd_ = true;  // of a CDATA section
  HtmlQuotesLeft quotes_;
};

}  // namespace vemra
