#pragma once

#include <array>
#include <string>
#include <vector>

#include "Support/definition/FieldList.h"
#include "Support/text/HighlightSearch.h"
#include "programs/engine/Search.h"

namespace vemra {
class TavoLangPack;
class TavoParseFile;
class TavoWord;
}  // namespace vemra

namespace vemra::engine {

// Marks in a document, as it is parsed again, the words that a search matched in its text. It
// counts the words of each field as the indexing sink did, so that a hit's position leads to its
// word. In a compound the whole is marked when it is what the query asked for, else the parts that
// are. For one parse of one document.
class HitSearch : public TavoHighlightSearch {
 public:
  // hits: those of the text, by field and position; their words outlive this object.
  explicit HitSearch(std::vector<Hit> hits) : hits_(std::move(hits)) {}

  // The parser that asks, a loan: words were indexed under the first field of its field list, which
  // the expanded list that it hands over no longer tells.
  void SetParser(const TavoParseFile* parser) { parser_ = parser; }

  void MarkWords(TavoSection& section, const CTavoFieldList& fields) override;
  void Finish() override {}

 private:
  static void MarkFirst(TavoSection& section, int words);
  static void Mark(TavoWord& word, const std::vector<std::string>& words, const TavoLangPack& pack);

  std::vector<Hit> hits_;
  const TavoParseFile* parser_ = nullptr;
  std::array<int, kMaxFields> wordsSeen_{};  // by field
};

}  // namespace vemra::engine
