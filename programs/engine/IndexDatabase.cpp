#include "programs/engine/IndexDatabase.h"

#include <charconv>

#include "Support/foundation/HostPath.h"
#include "programs/engine/EngineError.h"
#include "programs/engine/FullText.h"

namespace vemra::engine {
namespace {

std::string ExistingHostPath(const std::string& path) {
  std::string hostPath = ToHostPath(path);
  if (hostPath.empty()) {
    throw EngineError(Fault::kMissing, path + ": is on no drive of this computer");
  }
  return hostPath;
}

}  // namespace

std::string IndexPath(const std::string& folder, const std::string& name) {
  return folder + "\\" + name + ".vix";
}

std::string ColumnName(int fieldno) {
  return "f" + std::to_string(fieldno);
}

int FieldOfColumn(std::string_view name) {
  int fieldno = -1;
  if (name.empty() || name.front() != 'f') return -1;
  const char* end = name.data() + name.size();
  const auto [last, error] = std::from_chars(name.data() + 1, end, fieldno);
  return error == std::errc() && last == end && fieldno >= 0 && fieldno < kMaxFields ? fieldno : -1;
}

IndexDatabase::IndexDatabase(const std::string& path)
    : path_(path), connection_(ExistingHostPath(path), /*create=*/false) {
  CheckFormat();
  InstallFullText(connection_);
  ReadColumns();
}

void IndexDatabase::CheckFormat() {
  if (connection_.QueryNumber("SELECT count(*) FROM sqlite_schema") == 0) {
    throw EngineError(Fault::kMissing, path_ + ": nothing was indexed yet");
  }
  if (connection_.QueryNumber("PRAGMA application_id") != kIndexApplication ||
      connection_.QueryNumber("PRAGMA user_version") != kIndexFormat) {
    throw EngineError(Fault::kDamaged, path_ + ": is no index of this program's format");
  }
}

void IndexDatabase::ReadColumns() {
  Statement statement(connection_, "SELECT name FROM pragma_table_info('words')");
  while (statement.Step()) {
    const int fieldno = FieldOfColumn(statement.Bytes(0));
    if (fieldno >= 0) columns_.push_back(fieldno);
  }
  if (columns_.empty()) throw EngineError(Fault::kDamaged, path_ + ": has no fields");
}

std::int64_t IndexDatabase::CountTexts() {
  return connection_.QueryNumber("SELECT count(*) FROM texts");
}

std::optional<TextRecord> IndexDatabase::FindText(std::int64_t number) {
  if (!findText_) {
    findText_.emplace(connection_,
                      "SELECT path, type, title, sortkey, bytes, words, sentences, paragraphs"
                      " FROM texts WHERE number = ?");
  }
  Statement& statement = *findText_;
  statement.Reset();
  statement.Bind(1, number);
  if (!statement.Step()) return std::nullopt;
  TextRecord record;
  record.number = number;
  record.path = statement.Bytes(0);
  record.fileType = static_cast<int>(statement.Number(1));
  record.title = statement.Bytes(2);
  record.sortKey = statement.Bytes(3);
  record.bytes = statement.Number(4);
  record.words = statement.Number(5);
  record.sentences = statement.Number(6);
  record.paragraphs = statement.Number(7);
  statement.Reset();
  return record;
}

}  // namespace vemra::engine
