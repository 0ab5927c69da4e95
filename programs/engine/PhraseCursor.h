#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "programs/engine/FullText.h"
#include "programs/engine/Sqlite.h"

namespace vemra::engine {

// Tells where a phrase stands in text after text. Texts may be asked for in any order; going up by
// small steps is cheapest.
class PhraseCursor {
 public:
  // expression: of a single phrase. The index reports the places of an expression's phrases
  // reliably for a phrase that is all of the expression.
  PhraseCursor(Connection& connection, std::string expression);

  // In the order of columns and positions; valid until the next call.
  const std::vector<PhrasePlace>& FindPlaces(std::int64_t number);
  // Lets go of the index, which keeps an old state for as long as a cursor reads it.
  void Release();

 private:
  void Seek(std::int64_t number);
  void Step();

  std::string expression_;
  Statement texts_;
  bool isOpen_ = false;
  std::int64_t number_ = 0;  // of the text that the statement is at
  std::vector<PhrasePlace> places_;
};

}  // namespace vemra::engine
