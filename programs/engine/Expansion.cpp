#include "programs/engine/Expansion.h"

#include "Support/foundation/Wildcard.h"
#include "programs/engine/IndexDatabase.h"

namespace vemra::engine {
namespace {

class Expander {
 public:
  Expander(IndexDatabase& index, std::uint32_t limit)
      : words_(OpenVocabulary(index),
               "SELECT term, col FROM temp.vocabulary WHERE term >= ? ORDER BY term"),
        limit_(limit) {}

  void Expand(QueryNode& node) {
    for (QueryTerm& term : node.terms) {
      if (term.isPattern) Expand(term, node.columns);
    }
    for (QueryNode& child : node.children) Expand(child);
    for (QueryNode& child : node.excluded) Expand(child);
  }

  std::vector<std::string> TakeCut() { return std::move(cut_); }

 private:
  static Connection& OpenVocabulary(IndexDatabase& index) {
    index.GetConnection().Execute(
        "CREATE VIRTUAL TABLE IF NOT EXISTS temp.vocabulary"
        " USING fts5vocab('main', 'words', 'col')");
    return index.GetConnection();
  }

  // The word list is in order, one row for each column that a word stands in.
  void Expand(QueryTerm& term, const CTavoFieldList& columns) {
    const std::string prefix = term.text.substr(0, term.text.find_first_of("*?"));
    words_.Reset();
    words_.BindText(1, prefix);
    while (words_.Step()) {
      const std::string_view word = words_.Bytes(0);
      if (word.substr(0, prefix.size()) != prefix) break;
      if (!term.alternatives.empty() && term.alternatives.back() == word) continue;
      if (!IsIn(columns, words_.Bytes(1)) || MatchWildcard(term.text, word) == 0) continue;
      if (term.alternatives.size() == limit_) {
        cut_.push_back(term.text);
        break;
      }
      term.alternatives.emplace_back(word);
    }
    words_.Reset();
  }

  static bool IsIn(const CTavoFieldList& columns, std::string_view name) {
    const int fieldno = FieldOfColumn(name);
    return fieldno >= 0 && columns.IsSet(fieldno) != 0;
  }

  Statement words_;
  std::uint32_t limit_;
  std::vector<std::string> cut_;
};

}  // namespace

std::vector<std::string> ExpandPatterns(IndexDatabase& index, QueryNode& tree,
                                        std::uint32_t limit) {
  Expander expander(index, limit);
  expander.Expand(tree);
  return expander.TakeCut();
}

}  // namespace vemra::engine
