#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "programs/engine/Sqlite.h"

namespace vemra::engine {

class IndexDatabase;

// A walk over the words of an index, expressions left out, that begin with a prefix, in byte order,
// each once for every field that it stands in. The index is a loan.
class VocabularyWalk {
 public:
  explicit VocabularyWalk(IndexDatabase& index);

  // Begins a walk; an empty prefix is that of every word.
  void Seek(const std::string& prefix);
  // Moves to the next word, or to another field of the same; false at the end.
  bool Next();
  // Let go of the index before the walk is at its end.
  void Stop() { words_.Reset(); }

  // The word that the walk is at, valid until the next call of Next.
  std::string_view GetWord() const { return words_.Bytes(0); }
  int GetFieldno() const;
  std::int64_t CountTexts() const { return words_.Number(2); }        // in this field
  std::int64_t CountOccurrences() const { return words_.Number(3); }  // in this field

 private:
  Statement words_;
  std::string prefix_;
};

}  // namespace vemra::engine
