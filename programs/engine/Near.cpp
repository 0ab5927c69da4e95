#include "programs/engine/Near.h"

#include <algorithm>
#include <unordered_map>

namespace vemra::engine {
namespace {

// The places of one operand, prepared for the question whether one of them relates to a place of
// the next operand. Of the places that lie before and after it the nearest decides within a number
// of words, and the farthest within the same sentence or paragraph: that one surely shares no word.
class Related {
 public:
  Related(const std::vector<NearPlace>& places, const QueryRelation& relation)
      : relation_(relation) {
    if (relation.kind == QueryRelation::Kind::kWords) {
      CollectEnds(places);
    } else {
      CollectGroups(places);
    }
  }

  bool HasRelatedTo(const Span& span) const {
    return relation_.kind == QueryRelation::Kind::kWords ? IsWithinWords(span) : IsInGroup(span);
  }

 private:
  // The words that the places of one sentence or paragraph leave free before and after them.
  struct Group {
    int smallestLast;
    int largestFirst;
  };

  void CollectEnds(const std::vector<NearPlace>& places) {
    for (const NearPlace& place : places) {
      firsts_.push_back(place.span.firstWord);
      lasts_.push_back(place.span.lastWord);
    }
    std::sort(firsts_.begin(), firsts_.end());
    std::sort(lasts_.begin(), lasts_.end());
  }

  bool IsWithinWords(const Span& span) const {
    const auto last = std::lower_bound(lasts_.begin(), lasts_.end(), span.firstWord);
    if (last != lasts_.begin() && span.firstWord - *std::prev(last) <= relation_.words) return true;
    const auto first = std::upper_bound(firsts_.begin(), firsts_.end(), span.lastWord);
    return first != firsts_.end() && *first - span.lastWord <= relation_.words;
  }

  int GroupOf(const Span& span) const {
    return relation_.kind == QueryRelation::Kind::kSentence ? span.sentence : span.paragraph;
  }

  void CollectGroups(const std::vector<NearPlace>& places) {
    for (const NearPlace& place : places) {
      const Span& span = place.span;
      if (GroupOf(span) == Span::kSeveral) continue;
      Group& group =
          groups_.try_emplace(GroupOf(span), Group{span.lastWord, span.firstWord}).first->second;
      group.smallestLast = std::min(group.smallestLast, span.lastWord);
      group.largestFirst = std::max(group.largestFirst, span.firstWord);
    }
  }

  bool IsInGroup(const Span& span) const {
    if (GroupOf(span) == Span::kSeveral) return false;
    const auto group = groups_.find(GroupOf(span));
    return group != groups_.end() && (group->second.smallestLast < span.firstWord ||
                                      group->second.largestFirst > span.lastWord);
  }

  const QueryRelation& relation_;
  std::vector<int> firsts_;  // in order
  std::vector<int> lasts_;   // in order
  std::unordered_map<int, Group> groups_;
};

void KeepRelated(std::vector<NearPlace>& places, const std::vector<NearPlace>& neighbours,
                 const QueryRelation& relation) {
  const Related related(neighbours, relation);
  std::erase_if(places, [&](const NearPlace& place) { return !related.HasRelatedTo(place.span); });
}

}  // namespace

// From left to right each operand keeps what a chain leads to, and then, from right to left, what
// also leads to the end.
void KeepChains(std::vector<std::vector<NearPlace>>& operands,
                const std::vector<QueryRelation>& relations) {
  for (std::size_t i = 0; i < relations.size(); ++i) {
    KeepRelated(operands[i + 1], operands[i], relations[i]);
  }
  for (std::size_t i = relations.size(); i-- > 0;) {
    KeepRelated(operands[i], operands[i + 1], relations[i]);
  }
}

}  // namespace vemra::engine
