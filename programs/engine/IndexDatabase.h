#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Support/definition/FieldList.h"
#include "programs/engine/Sqlite.h"

// The index of a text database: one SQLite file in the index folder, named after the index with the
// extension ".vix". It is in WAL mode, so that searches read a whole state while an indexer writes.
//
// - texts: one row a text (document), by its number from 1 up, with the layout of its words.
// - words: a full-text index without stored text, one column "f<number>" a field of the database. A
//   text's words stand in the column of the field that they were indexed under, in the order in
//   which the library gave them, the parts of a compound word at the position of the whole.
namespace vemra::engine {

// One text. Counts are of the words, sentences and paragraphs that the library reported; the title
// is in the database's code page, the path in the Windows form.
struct TextRecord {
  std::int64_t number = 0;
  std::string path;
  int fileType = 0;
  std::string title;
  std::string sortKey;
  std::int64_t bytes = 0;
  std::int64_t words = 0;
  std::int64_t sentences = 0;
  std::int64_t paragraphs = 0;
};

// "FOLDER\NAME.vix"; folder and result in the Windows form.
std::string IndexPath(const std::string& folder, const std::string& name);

// The name of a field's column, and the field of such a name (-1 for any other).
std::string ColumnName(int fieldno);
int FieldOfColumn(std::string_view name);

// Raised with any change of the tables.
inline constexpr int kIndexFormat = 2;
inline constexpr std::int64_t kIndexApplication = 0x76656d72;  // "vemr"

// The index as searches see it. Throws EngineError: kMissing when nothing was indexed yet, kDamaged
// when the file is something else or cannot be read.
class IndexDatabase {
 public:
  // path in the Windows form.
  explicit IndexDatabase(const std::string& path);

  Connection& GetConnection() { return connection_; }
  // Field numbers in the order of the columns of words.
  const std::vector<int>& GetColumns() const { return columns_; }
  std::int64_t CountTexts();
  // Nothing when there is no such text.
  std::optional<TextRecord> FindText(std::int64_t number);

 private:
  void CheckFormat();
  void ReadColumns();

  std::string path_;
  Connection connection_;
  std::vector<int> columns_;
  std::optional<Statement> findText_;  // prepared once
};

}  // namespace vemra::engine
