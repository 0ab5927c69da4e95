#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "programs/commands/Database.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Search.h"

namespace vemra::commands {

// A query that a person typed, at work on the index of a database. Both are loans.
class QuerySession {
 public:
  // query in UTF-8. Throws CommandError that shows the query with a caret under what is wrong.
  QuerySession(Database& database, engine::IndexDatabase& index, const std::string& query);

  engine::FoundTexts Find(int count);
  engine::FoundTexts FindSorted(int count, const engine::SortOrder& order);
  std::vector<engine::Hit> FindHits(std::int64_t number) { return search_.FindHits(number); }
  // Says which patterns stand for more words than were searched; empty when none.
  const std::string& GetWarning() const { return warning_; }

 private:
  engine::Search MakeSearch(engine::IndexDatabase& index, const std::string& query);

  Database& database_;
  std::string warning_;
  engine::Search search_;  // after what its making fills
};

}  // namespace vemra::commands
