#include "programs/engine/Expansion.h"

#include <optional>

#include "Support/foundation/Wildcard.h"
#include "programs/engine/Vocabulary.h"

namespace vemra::engine {
namespace {

class Expander {
 public:
  Expander(IndexDatabase& index, std::uint32_t limit) : index_(index), limit_(limit) {}

  void Expand(QueryNode& node) {
    for (QueryTerm& term : node.terms) {
      if (term.isPattern) Expand(term, node.columns);
    }
    for (QueryNode& child : node.children) Expand(child);
    for (QueryNode& child : node.excluded) Expand(child);
  }

  std::vector<std::string> TakeCut() { return std::move(cut_); }

 private:
  void Expand(QueryTerm& term, const CTavoFieldList& columns) {
    if (!words_) words_.emplace(index_);
    words_->Seek(term.text.substr(0, term.text.find_first_of("*?")));
    while (words_->Next()) {
      const std::string_view word = words_->GetWord();
      if (!term.alternatives.empty() && term.alternatives.back() == word) continue;
      if (!IsIn(columns, words_->GetFieldno()) || MatchWildcard(term.text, word) == 0) continue;
      if (term.alternatives.size() == limit_) {
        cut_.push_back(term.text);
        break;
      }
      term.alternatives.emplace_back(word);
    }
    words_->Stop();
  }

  static bool IsIn(const CTavoFieldList& columns, int fieldno) {
    return fieldno >= 0 && columns.IsSet(fieldno) != 0;
  }

  IndexDatabase& index_;
  std::optional<VocabularyWalk> words_;  // once there is a pattern
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
