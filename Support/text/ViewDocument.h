#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Export.h"
#include "Support/text/TextRange.h"

namespace vemra {

// What a view shows: the text of a document with its paragraphs, links and hits. Positions are
// bytes of the text, counted from 0. A value object; used by one thread at a time.
//
// A paragraph ends with a line feed, a carriage return, the two together, or a form feed, which
// ends the page as well. What follows the last of them is a paragraph only when it has text.
// Links do not overlap links, nor hits hits; a link and a hit may. All are in the order of the
// text, and none is empty.
class SUPPORT_API TavoViewDocument {
 public:
  struct Link {
    TavoTextRange range;
    std::string target;  // as the document has it
  };

  static constexpr int kLongestText = std::numeric_limits<int>::max() - 1;

  // maxLength: bytes of text that the document takes, 0 to kLongestText; what is beyond is dropped.
  explicit TavoViewDocument(int maxLength = kLongestText);

  // Building. Text is appended; a link or a hit reaches from its start to its end, to the start of
  // the next one, or to the end of the text, and is dropped when there is no text in it.
  void AppendText(std::string_view text);
  void BeginLink(std::string target);
  void EndLink();
  void BeginHit();
  void EndHit();
  void Clear();

  const std::string& GetText() const { return text_; }
  int GetLength() const { return static_cast<int>(text_.size()); }
  std::string_view GetText(const TavoTextRange& range) const;
  int IsCut() const { return cut_; }  // text was dropped
  int GetMaxLength() const { return maxLength_; }

  int GetParagraphsNumber() const;
  // The paragraph without what ends it. index from 0; it must be valid, as for the links and hits.
  TavoTextRange GetParagraph(int index) const;
  int EndsPage(int index) const;  // a form feed ends the paragraph
  // The paragraph that holds a position, the ends of lines included; the last one for a position
  // behind the text, -1 when there is none.
  int GetParagraphAt(int position) const;

  int GetLinksNumber() const { return static_cast<int>(links_.size()); }
  const Link& GetLink(int index) const { return links_[static_cast<std::size_t>(index)]; }
  int GetLinkAt(int position) const;  // -1 when none is there
  // Hits, numbered from 0.
  int GetHitsNumber() const { return static_cast<int>(hits_.size()); }
  const TavoTextRange& GetHit(int index) const { return hits_[static_cast<std::size_t>(index)]; }
  int GetHitAt(int position) const;  // -1 when none is there
  // The first that starts at or after a position, and the last that ends at or before it; -1 when
  // there is none.
  int GetHitFrom(int position) const;
  int GetHitBefore(int position) const;

 private:
  void AppendParagraphs(int from);

  std::string text_;
  int maxLength_;
  int cut_ = 0;
  std::vector<int> paragraphs_{0};  // their starts, and where the next one would start
  std::vector<Link> links_;
  std::vector<TavoTextRange> hits_;
  // Begun; stored with the first text that follows.
  std::optional<std::string> newLink_;
  bool newHit_ = false;
  // The last one takes the text that is appended.
  bool inLink_ = false;
  bool inHit_ = false;
};

}  // namespace vemra
