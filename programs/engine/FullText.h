#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace vemra::engine {

class Connection;

// Where a phrase stands in a text: its first word is the position-th word, from 0, of the column-th
// column.
struct PhrasePlace {
  std::int32_t column;
  std::int32_t position;
};

// Teaches a connection's full-text index the two things that it needs of this engine:
// - the tokenizer "vemra", which reads word streams (WordStream.h), so that the index holds exactly
//   the words that it is given;
// - the function phrase_places(table), whose value for a row of a full-text query is the places of
//   all its phrases, read by ReadPhrasePlaces.
// Throws EngineError when SQLite was built without full-text search.
void InstallFullText(Connection& connection);

// The places in a value of phrase_places.
std::vector<PhrasePlace> ReadPhrasePlaces(std::string_view value);

}  // namespace vemra::engine
