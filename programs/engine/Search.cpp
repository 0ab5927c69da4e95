#include "programs/engine/Search.h"

#include <algorithm>
#include <tuple>

#include "programs/engine/FullText.h"
#include "programs/engine/WordStream.h"

namespace vemra::engine {
namespace {

CTavoFieldList ListOf(const std::vector<int>& columns) {
  CTavoFieldList list;
  for (const int fieldno : columns) list.Set(fieldno);
  return list;
}

bool IsBetter(const FoundText& a, const FoundText& b) {
  return a.score != b.score ? a.score > b.score : a.number < b.number;
}

// Keeps the best count of what is added, in a heap whose top is the worst of them.
class BestTexts {
 public:
  explicit BestTexts(int count) : count_(static_cast<std::size_t>(std::max(count, 0))) {}

  void Add(const FoundText& text) {
    if (count_ == 0) return;
    if (heap_.size() == count_) {
      if (!IsBetter(text, heap_.front())) return;
      std::pop_heap(heap_.begin(), heap_.end(), IsBetter);
      heap_.pop_back();
    }
    heap_.push_back(text);
    std::push_heap(heap_.begin(), heap_.end(), IsBetter);
  }

  std::vector<FoundText> Take() {
    std::sort_heap(heap_.begin(), heap_.end(), IsBetter);
    return std::move(heap_);
  }

 private:
  std::size_t count_;
  std::vector<FoundText> heap_;
};

// The query as an expression of the full-text index; empty when no text can match: a word that the
// index does not know may not be written there.
class ExpressionWriter {
 public:
  explicit ExpressionWriter(const CTavoFieldList& columns) : columns_(columns) {}

  std::string Write(const QueryNode& node) const {
    switch (node.kind) {
      case QueryNode::Kind::kPhrase:
        return WritePhrase(node);
      case QueryNode::Kind::kAnd:
        return WriteAnd(node);
      default:
        return WriteOr(node.children);
    }
  }

 private:
  std::string WritePhrase(const QueryNode& phrase) const {
    std::string stream;
    for (const QueryTerm& term : phrase.terms) {
      if (term.alternatives.empty()) return {};
      AppendWord(stream, term.alternatives.front());
      for (std::size_t i = 1; i < term.alternatives.size(); ++i) {
        AppendAtSamePosition(stream, term.alternatives[i]);
      }
    }
    const CTavoFieldList columns = phrase.columns & columns_;
    if (columns.IsEmpty() != 0) return {};
    return (columns == columns_ ? std::string() : ColumnFilter(columns)) + Quote(stream);
  }

  static std::string ColumnFilter(const CTavoFieldList& columns) {
    std::string filter = "{";
    POSITION position = columns.GetStartPosition();
    while (position != 0) filter += ColumnName(columns.GetNextFieldno(position)) + ' ';
    return filter + "} : ";
  }

  static std::string Quote(const std::string& stream) {
    std::string quoted = "\"";
    for (const char c : stream) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
  }

  // NOT binds most tightly there, so it goes with the first operand: fewer parentheses to nest.
  std::string WriteAnd(const QueryNode& node) const {
    std::string text;
    const std::string excluded = WriteOr(node.excluded);
    for (const QueryNode& child : node.children) {
      const std::string operand = WriteOperand(child);
      if (operand.empty()) return {};
      if (!text.empty()) text += " AND ";
      text += operand;
      if (&child == &node.children.front() && !excluded.empty()) text += " NOT (" + excluded + ')';
    }
    return text;
  }

  std::string WriteOr(const std::vector<QueryNode>& nodes) const {
    std::string text;
    for (const QueryNode& node : nodes) {
      const std::string operand = Write(node);
      if (operand.empty()) continue;
      if (!text.empty()) text += " OR ";
      text += operand;
    }
    return text;
  }

  std::string WriteOperand(const QueryNode& node) const {
    const std::string text = Write(node);
    return node.kind == QueryNode::Kind::kPhrase || text.empty() ? text : '(' + text + ')';
  }

  const CTavoFieldList& columns_;
};

std::string RankingQuery(const std::vector<int>& columns, const FieldWeights& weights) {
  std::string sql = "SELECT rowid, bm25(words";
  for (const int fieldno : columns) {
    sql += ", " + std::to_string(weights.byField[static_cast<std::size_t>(fieldno)]);
  }
  return sql + ") FROM words WHERE words MATCH ?";
}

}  // namespace

Search::Search(IndexDatabase& index, QueryNode query)
    : index_(index), query_(std::move(query)), columns_(ListOf(index.GetColumns())) {}

FoundTexts Search::Find(int count, const FieldWeights& weights) {
  FoundTexts found;
  const std::string expression = ExpressionWriter(columns_).Write(query_);
  if (expression.empty()) return found;
  Statement ranking(index_.GetConnection(), RankingQuery(index_.GetColumns(), weights));
  ranking.BindText(1, expression);
  BestTexts best(count);
  while (ranking.Step()) {
    ++found.total;
    best.Add({ranking.Number(0), -ranking.Real(1)});  // bm25 gives lower values for better texts
  }
  found.best = best.Take();
  return found;
}

std::vector<Hit> Search::FindHits(std::int64_t number) {
  if (!places_) {
    places_.emplace(index_.GetConnection(),
                    "SELECT phrase_places(words) FROM words WHERE words MATCH ? AND rowid = ?");
  }
  std::vector<Hit> hits;
  CollectHits(query_, number, hits);
  std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
    return std::tie(a.fieldno, a.position) < std::tie(b.fieldno, b.position);
  });
  return hits;
}

bool Search::CollectHits(const QueryNode& node, std::int64_t number, std::vector<Hit>& hits) {
  if (node.kind == QueryNode::Kind::kPhrase) return CollectPhrase(node, number, hits);
  const std::size_t before = hits.size();
  const auto matches = [&](const QueryNode& child) { return CollectHits(child, number, hits); };
  const auto matched = std::count_if(node.children.begin(), node.children.end(), matches);
  if (node.kind == QueryNode::Kind::kOr) return matched > 0;
  const bool matchesAll = matched == static_cast<std::ptrdiff_t>(node.children.size());
  if (matchesAll && std::none_of(node.excluded.begin(), node.excluded.end(), matches)) return true;
  hits.resize(before);
  return false;
}

bool Search::CollectPhrase(const QueryNode& phrase, std::int64_t number, std::vector<Hit>& hits) {
  const std::string expression = ExpressionWriter(columns_).Write(phrase);
  if (expression.empty()) return false;
  places_->Reset();
  places_->BindText(1, expression);
  places_->Bind(2, number);
  bool found = false;
  if (places_->Step()) {
    for (const PhrasePlace& place : ReadPhrasePlaces(places_->Bytes(0))) {
      found = true;
      const int fieldno = index_.GetColumns()[static_cast<std::size_t>(place.column)];
      for (std::size_t i = 0; i < phrase.terms.size(); ++i) {
        hits.push_back(
            {fieldno, place.position + static_cast<int>(i), &phrase.terms[i].alternatives});
      }
    }
  }
  places_->Reset();
  return found;
}

}  // namespace vemra::engine
