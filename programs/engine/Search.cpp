#include "programs/engine/Search.h"

#include <algorithm>
#include <tuple>

#include "programs/engine/Expression.h"

namespace vemra::engine {
namespace {

// Keeps the best count of what is added, in a heap whose top is the worst of them.
template <typename Item, typename IsBetter>
class Best {
 public:
  Best(int count, IsBetter isBetter)
      : count_(static_cast<std::size_t>(std::max(count, 0))), isBetter_(isBetter) {}

  void Add(Item item) {
    if (count_ == 0) return;
    if (heap_.size() == count_) {
      if (!isBetter_(item, heap_.front())) return;
      std::pop_heap(heap_.begin(), heap_.end(), isBetter_);
      heap_.pop_back();
    }
    heap_.push_back(std::move(item));
    std::push_heap(heap_.begin(), heap_.end(), isBetter_);
  }

  std::vector<Item> Take() {
    std::sort_heap(heap_.begin(), heap_.end(), isBetter_);
    return std::move(heap_);
  }

 private:
  std::size_t count_;
  IsBetter isBetter_;
  std::vector<Item> heap_;
};

bool HasBetterScore(const FoundText& a, const FoundText& b) {
  return a.score != b.score ? a.score > b.score : a.number < b.number;
}

struct SortedText {
  FoundText text;
  std::string value;
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
  Best<FoundText, decltype(&HasBetterScore)> best(count, HasBetterScore);
  found.total = ForEachText(weights, [&](const FoundText& text) { best.Add(text); });
  found.best = best.Take();
  return found;
}

FoundTexts Search::FindSorted(int count, const FieldWeights& weights, const SortOrder& order) {
  const auto isBefore = [&](const SortedText& a, const SortedText& b) {
    const int result = CompareSortValues(a.value, b.value, order);
    return result != 0 ? result < 0 : a.text.number < b.text.number;
  };
  FoundTexts found;
  Best<SortedText, decltype(isBefore)> best(count, isBefore);
  Statement findKey(index_.GetConnection(), "SELECT sortkey FROM texts WHERE number = ?");
  found.total = ForEachText(weights, [&](const FoundText& text) {
    findKey.Bind(1, text.number);
    best.Add({text, findKey.Step() ? SortValue(findKey.Bytes(0), order.fieldno) : std::string()});
    findKey.Reset();
  });
  for (const SortedText& sorted : best.Take()) found.best.push_back(sorted.text);
  return found;
}

std::int64_t Search::ForEachText(const FieldWeights& weights,
                                 const std::function<void(const FoundText&)>& onText) {
  if (expression_.empty()) return 0;
  Statement ranking(index_.GetConnection(), RankingQuery(index_.GetColumns(), weights));
  ranking.BindText(1, expression_);
  std::int64_t total = 0;
  while (ranking.Step()) {
    const std::int64_t number = ranking.Number(0);
    if (needsPlaces_ && !Matches(number)) continue;
    ++total;
    onText({number, -ranking.Real(1)});  // bm25 gives lower values for better texts
  }
  matcher_.Release();
  return total;
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
