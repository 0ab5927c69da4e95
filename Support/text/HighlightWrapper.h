#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "Support/Export.h"

namespace vemra {

class TavoHighlightSearch;
class TavoLangPack;
class TavoSection;

// One request to highlight a document: a whole document printed as it is parsed, or a summary of
// it. Used by one thread at a time, for one document after another if its summary is fetched and
// cleared in between.
class SUPPORT_API TavoHighlightWrapper {
 public:
  enum Mode {
    kWholeDocument = 0,   // printed to the parser's output with its hits
    kFirstWords = 1,      // summary of the first words; the search is not asked
    kAroundFirstHit = 2,  // summary with the first hit in its middle
  };

  // search, which may be null, and pack are loans for the life of the wrapper; without a pack the
  // summary has the built-in one. maxWords: real words of the summary, 0 or more.
  TavoHighlightWrapper(Mode mode, TavoHighlightSearch* search, int maxWords = 0,
                       const TavoLangPack* pack = nullptr);
  TavoHighlightWrapper(const TavoHighlightWrapper&) = delete;
  TavoHighlightWrapper& operator=(const TavoHighlightWrapper&) = delete;
  ~TavoHighlightWrapper();

  Mode GetMode() const { return mode_; }
  TavoHighlightSearch* GetSearch() const { return search_; }
  // The parser stores the page count of its output here at the end of a document.
  int GetPageno() const { return pageno_; }
  void SetPageno(int pageno) { pageno_ = pageno; }
  // Carried for the program: how it lists texts, how many titles it shows, which highlight it is
  // at.
  int GetListType() const { return listType_; }
  void SetListType(int listType) { listType_ = listType; }
  int GetTitleCount() const { return titleCount_; }
  void SetTitleCount(int count) { titleCount_ = count; }
  int GetHighlightNumber() const { return highlightNumber_; }
  void SetHighlightNumber(int number) { highlightNumber_ = number; }
  const std::vector<int>& GetArrayOfFields() const { return fields_; }
  void SetArrayOfFields(const std::vector<int>& fields) { fields_ = fields; }

  // Summaries. AddSection takes a parsed section over and returns whether the summary has enough:
  // in mode 1 when its words with the section's reach the maximum, in mode 2 when the section has a
  // marked word. With mayQueue, a locked section, and every one after it, is queued until
  // StopHighlight; such a section has an output, which keeps it alive when it is unlocked.
  int AddSection(TavoSection* section, int mayQueue);
  // Appends a section to the summary at once; it stays the caller's.
  void AddToSection(TavoSection& section);
  // The document has ended. Mode 0: the search finishes. Mode 2: it finishes, and the queued
  // sections are added until there is enough, the others deleted; then the summary is truncated.
  // Mode 1: the queued sections are deleted; truncating is left to the caller.
  void StopHighlight();
  // Cuts the summary to the maximum number of words: in mode 1 at its end; in mode 2 so that the
  // first marked word stands in the middle, or not at all when no word is marked.
  void TruncateSection();
  int IsEnough() const { return enough_; }
  // A loan; never null.
  TavoSection* GetSummary() const { return summary_.get(); }
  void ClearSummary();

 private:
  int IsEnoughWith(TavoSection& section) const;
  void AddQueued();

  Mode mode_;
  TavoHighlightSearch* search_;
  int pageno_ = 0;
  int listType_ = 0;
  int titleCount_ = 0;
  int highlightNumber_ = 0;
  std::vector<int> fields_;
  int enough_ = 0;
  std::unique_ptr<TavoSection> summary_;
  int maxWords_;
  std::deque<std::unique_ptr<TavoSection>> queue_;
};

}  // namespace vemra
