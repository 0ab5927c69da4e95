#include "programs/engine/Search.h"

#include <algorithm>
#include <tuple>

#include "programs/engine/Expression.h"

namespace vemra::engine {
namespace {

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

std::string RankingQuery(const std::vector<int>& columns, const FieldWeights& weights) {
  std::string sql = "SELECT rowid, bm25(words";
  for (const int fieldno : columns) {
    sql += ", " + std::to_string(weights.byField[static_cast<std::size_t>(fieldno)]);
  }
  return sql + ") FROM words WHERE words MATCH ?";
}

CTavoFieldList ListOf(const std::vector<int>& columns) {
  CTavoFieldList list;
  for (const int fieldno : columns) list.Set(fieldno);
  return list;
}

}  // namespace

Search::Search(IndexDatabase& index, QueryNode query)
    : index_(index),
      query_(std::move(query)),
      expression_(WriteExpression(query_, ListOf(index.GetColumns()))),
      needsPlaces_(NeedsPlaces(query_)),
      matcher_(index, query_) {}

FoundTexts Search::Find(int count, const FieldWeights& weights) {
  FoundTexts found;
  if (expression_.empty()) return found;
  Statement ranking(index_.GetConnection(), RankingQuery(index_.GetColumns(), weights));
  ranking.BindText(1, expression_);
  BestTexts best(count);
  while (ranking.Step()) {
    const std::int64_t number = ranking.Number(0);
    if (needsPlaces_ && !Matches(number)) continue;
    ++found.total;
    best.Add({number, -ranking.Real(1)});  // bm25 gives lower values for better texts
  }
  matcher_.Release();
  found.best = best.Take();
  return found;
}

bool Search::Matches(std::int64_t number) {
  hits_.clear();
  return matcher_.Match(number, hits_);
}

std::vector<Hit> Search::FindHits(std::int64_t number) {
  std::vector<Hit> hits;
  matcher_.Match(number, hits);
  matcher_.Release();
  std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
    return std::tie(a.fieldno, a.position) < std::tie(b.fieldno, b.position);
  });
  return hits;
}

}  // namespace vemra::engine
