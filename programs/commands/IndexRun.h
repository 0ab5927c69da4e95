#pragma once

#include <cstdint>
#include <string>

#include "Support/definition/FileDict.h"
#include "programs/commands/Database.h"
#include "programs/commands/IndexingAccess.h"
#include "programs/commands/Progress.h"

#include "programs/engine/EngineCallbacks.h"
#include "programs/engine/IndexWriter.h"

namespace vemra {
class TavoIndex;
class TavoParseFile;
}  // namespace vemra

namespace vemra::commands {

// What was indexed; skipped files are not in the other figures.
struct IndexFigures {
  std::int64_t files = 0;
  std::int64_t skipped = 0;
  std::int64_t words = 0;
  std::int64_t sentences = 0;
  std::int64_t paragraphs = 0;
  std::int64_t bytes = 0;
};

// The files of the index list that are there to index.
std::int64_t CountFiles(const CTavoFileIDX& list);

// One pass over the index list of a database: numbers each document in the file dictionary and
// hands it through its format's parser to the engine. All references are loans.
class IndexRun {
 public:
  // The database's index list is loaded. Takes the place of the writer; throws EngineError.
  IndexRun(Database& database, Progress& progress, IndexingAccess& access);

  // Indexes everything, or up to the request to stop; false when stopped. It keeps up the access,
  // and throws LockedError when that is lost; what is not stored by then is lost.
  bool IndexAll();
  // Ends the index when all was indexed, or stores what there is. LockedError as above.
  void Finish(bool complete);
  const IndexFigures& GetFigures() const { return figures_; }

 private:
  void IndexFileType(int fileType);
  void IndexFile(TavoIndex& index, TavoParseFile& parser, int fileType, const std::string& path);
  void StoreText(const std::string& path, int fileType);
  void Skip(const std::string& path, const std::string& reason);
  void OnMessage(const char* text);

  Database& database_;
  Progress& progress_;
  IndexingAccess& access_;
  engine::IndexWriter writer_;
  engine::EngineCallbacks callbacks_;
  CTavoFileDict dictionary_;
  std::string current_;  // the path of the document being indexed
  IndexFigures figures_;
};

}  // namespace vemra::commands
