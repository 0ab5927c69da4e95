#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Support/definition/FieldList.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Layout.h"
#include "programs/engine/Near.h"
#include "programs/engine/PhraseCursor.h"
#include "programs/engine/Query.h"

namespace vemra::engine {

// A word of a text that a query matched: the position-th word, from 0, of the words indexed under
// a field. words are those that the query allows there, a loan of the query. A hit of an expression
// is at the last word of the section that the expression stands for, and means its first
// sectionWords words, whatever they are.
struct Hit {
  int fieldno = 0;
  int position = 0;
  const std::vector<std::string>* words = nullptr;
  int sectionWords = 0;
};

// Decides whether texts match a query and by which words, from the places of its phrases in them.
// The index and the query are loans. Texts may be asked for in any order; rising numbers are
// cheapest.
class Matcher {
 public:
  // query: parsed and expanded.
  Matcher(IndexDatabase& index, const QueryNode& query);

  // Whether the text matches; then its hits are added, in no order. They are those of the parts of
  // the query that the text satisfies.
  bool Match(std::int64_t number, std::vector<Hit>& hits);
  // Lets go of the index after the last of several texts.
  void Release();

 private:
  bool Collect(const QueryNode& node, std::vector<Hit>& hits);
  bool CollectPhrase(const QueryNode& phrase, std::vector<Hit>& hits);
  bool CollectNear(const QueryNode& chain, std::vector<Hit>& hits);
  bool CollectOr(const QueryNode& node, std::vector<Hit>& hits);
  bool CollectAnd(const QueryNode& node, std::vector<Hit>& hits);
  static void AddHits(const QueryNode& phrase, int fieldno, int position, std::vector<Hit>& hits);

  std::optional<PhraseCursor>& GetCursor(const QueryNode& phrase);
  const std::vector<PhrasePlace>& FindPlaces(const QueryNode& phrase);
  void FindNearPlaces(const QueryNode& operand, std::vector<NearPlace>& places);
  int FieldOf(const PhrasePlace& place) const;
  const TextLayout& GetLayout();

  IndexDatabase& index_;
  const QueryNode& query_;
  CTavoFieldList columns_;  // of the index
  // Of the phrases asked for so far; nothing for one that no text can hold.
  std::unordered_map<const QueryNode*, std::optional<PhraseCursor>> cursors_;
  std::optional<Statement> findLayout_;

  std::int64_t number_ = 0;  // of the text being looked at
  bool hasLayout_ = false;   // whether layout_ is that text's
  TextLayout layout_;
};

}  // namespace vemra::engine
