#include "programs/engine/Matcher.h"

#include <algorithm>

#include "programs/engine/EngineError.h"
#include "programs/engine/Expression.h"

namespace vemra::engine {
namespace {

[[noreturn]] void ThrowDamaged() {
  throw EngineError(Fault::kDamaged, "the index does not tell where the words of a text stand");
}

}  // namespace

Matcher::Matcher(IndexDatabase& index, const QueryNode& query) : index_(index), query_(query) {
  for (const int fieldno : index.GetColumns()) columns_.Set(fieldno);
}

bool Matcher::Match(std::int64_t number, std::vector<Hit>& hits) {
  number_ = number;
  hasLayout_ = false;
  return Collect(query_, hits);
}

void Matcher::Release() {
  for (auto& [phrase, cursor] : cursors_) {
    if (cursor) cursor->Release();
  }
}

bool Matcher::Collect(const QueryNode& node, std::vector<Hit>& hits) {
  switch (node.kind) {
    case QueryNode::Kind::kPhrase:
      return CollectPhrase(node, hits);
    case QueryNode::Kind::kNear:
      return CollectNear(node, hits);
    case QueryNode::Kind::kOr:
      return CollectOr(node, hits);
    default:
      return CollectAnd(node, hits);
  }
}

bool Matcher::CollectPhrase(const QueryNode& phrase, std::vector<Hit>& hits) {
  const std::vector<PhrasePlace>& places = FindPlaces(phrase);
  for (const PhrasePlace& place : places) AddHits(phrase, FieldOf(place), place.position, hits);
  return !places.empty();
}

bool Matcher::CollectNear(const QueryNode& chain, std::vector<Hit>& hits) {
  std::vector<std::vector<NearPlace>> operands(chain.children.size());
  for (std::size_t i = 0; i < operands.size(); ++i) {
    FindNearPlaces(chain.children[i], operands[i]);
    if (operands[i].empty()) return false;
  }
  KeepChains(operands, chain.relations);
  for (const std::vector<NearPlace>& places : operands) {
    for (const NearPlace& place : places) {
      AddHits(*place.phrase, place.fieldno, place.position, hits);
    }
  }
  return !operands.front().empty();
}

bool Matcher::CollectOr(const QueryNode& node, std::vector<Hit>& hits) {
  bool matches = false;
  for (const QueryNode& child : node.children) matches |= Collect(child, hits);
  return matches;
}

bool Matcher::CollectAnd(const QueryNode& node, std::vector<Hit>& hits) {
  const std::size_t before = hits.size();
  const auto matches = [&](const QueryNode& child) { return Collect(child, hits); };
  if (std::all_of(node.children.begin(), node.children.end(), matches) &&
      std::none_of(node.excluded.begin(), node.excluded.end(), matches)) {
    return true;
  }
  hits.resize(before);
  return false;
}

void Matcher::AddHits(const QueryNode& phrase, int fieldno, int position, std::vector<Hit>& hits) {
  for (const QueryTerm& term : phrase.terms) {
    hits.push_back({fieldno, position++, &term.alternatives, term.sectionWords});
  }
}

const std::vector<PhrasePlace>& Matcher::FindPlaces(const QueryNode& phrase) {
  static const std::vector<PhrasePlace> none;
  std::optional<PhraseCursor>& cursor = GetCursor(phrase);
  return cursor ? cursor->FindPlaces(number_) : none;
}

std::optional<PhraseCursor>& Matcher::GetCursor(const QueryNode& phrase) {
  const auto [cursor, isNew] = cursors_.try_emplace(&phrase);
  if (isNew) {
    std::string expression = WriteExpression(phrase, columns_);
    if (!expression.empty()) cursor->second.emplace(index_.GetConnection(), std::move(expression));
  }
  return cursor->second;
}

void Matcher::FindNearPlaces(const QueryNode& operand, std::vector<NearPlace>& places) {
  for (const QueryNode& child : operand.children) FindNearPlaces(child, places);
  if (operand.kind != QueryNode::Kind::kPhrase) return;
  for (const PhrasePlace& found : FindPlaces(operand)) {
    NearPlace place{{}, &operand, FieldOf(found), found.position};
    const int words = static_cast<int>(operand.terms.size());
    if (!GetLayout().Find(place.fieldno, place.position, words, place.span)) ThrowDamaged();
    places.push_back(place);
  }
}

int Matcher::FieldOf(const PhrasePlace& place) const {
  return index_.GetColumns()[static_cast<std::size_t>(place.column)];
}

const TextLayout& Matcher::GetLayout() {
  if (hasLayout_) return layout_;
  if (!findLayout_) {
    findLayout_.emplace(index_.GetConnection(), "SELECT layout FROM texts WHERE number = ?");
  }
  findLayout_->Bind(1, number_);
  hasLayout_ = findLayout_->Step() && layout_.Read(findLayout_->Bytes(0));
  findLayout_->Reset();
  if (!hasLayout_) ThrowDamaged();
  return layout_;
}

}  // namespace vemra::engine
