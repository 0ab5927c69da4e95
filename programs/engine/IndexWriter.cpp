#include "programs/engine/IndexWriter.h"

#include <system_error>

#include "Support/foundation/HostPath.h"
#include "programs/engine/EngineError.h"
#include "programs/engine/FullText.h"

namespace vemra::engine {
namespace {

// One batch. The words of a larger one take more time, since what sorts them outgrows the
// processor's cache, and memory; smaller ones make more parts.
constexpr std::size_t kBatchBytes = std::size_t{12} << 20;
constexpr int kBatchTexts = 4000;
// Each batch leaves a part of the index of its own. A few are searched as fast as one, and to merge
// them takes a tenth of the time of indexing.
constexpr int kPartsSearchedAsOne = 8;

constexpr int kSharingViolation = 32;
constexpr int kLockViolation = 33;

const char* const kCreateTexts =
    "CREATE TABLE texts(number INTEGER PRIMARY KEY, path TEXT NOT NULL, type INTEGER NOT NULL,"
    " title BLOB NOT NULL, sortkey BLOB NOT NULL, bytes INTEGER NOT NULL, words INTEGER NOT NULL,"
    " sentences INTEGER NOT NULL, paragraphs INTEGER NOT NULL, layout BLOB NOT NULL)";

std::string HostPathOf(const std::string& path) {
  std::string hostPath = ToHostPath(path);
  if (hostPath.empty()) {
    throw EngineError(Fault::kFailed, path + ": is on no drive of this computer");
  }
  return hostPath;
}

std::string ColumnNames(const std::vector<int>& columns) {
  std::string names;
  for (const int fieldno : columns) names += ColumnName(fieldno) + ", ";
  return names;
}

}  // namespace

TavoFile IndexWriter::LockIndex(const std::string& path) try {
  return TavoFile(path + "-writer", TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenOrCreate,
                  TavoFile::Share::kDenyReadWrite);
} catch (const std::system_error& error) {
  const int code = error.code().value();
  if (code == kSharingViolation || code == kLockViolation) {
    throw EngineError(Fault::kLocked, path + ": is being written by another process");
  }
  throw EngineError(Fault::kFailed, error.what());
}

IndexWriter::IndexWriter(const std::string& path, const CTavoFieldList& fields)
    : lock_(LockIndex(path)), path_(path), connection_(HostPathOf(path), /*create=*/true) {
  POSITION position = fields.GetStartPosition();
  while (position != 0) columns_.push_back(fields.GetNextFieldno(position));
  for (const int fieldno : columns_) isColumn_[static_cast<std::size_t>(fieldno)] = true;
  PrepareFile();
}

void IndexWriter::PrepareFile() {
  const bool isNew = connection_.QueryNumber("SELECT count(*) FROM sqlite_schema") == 0;
  if (!isNew && connection_.QueryNumber("PRAGMA application_id") != kIndexApplication) {
    throw EngineError(Fault::kDamaged,
                      path_ + ": is no index of this program; remove it and index again");
  }
  InstallFullText(connection_);
  // A checkpoint copies each page once more, so it waits for a batch; a commit alone does not wait
  // for the disk, and the end of the process, however it comes, loses nothing of it.
  connection_.Execute(
      "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA cache_size=-16000;"
      "PRAGMA wal_autocheckpoint=4000; PRAGMA journal_size_limit=33554432");
}

std::uint32_t IndexWriter::BeginText() {
  text_ = TextRecord();
  text_.number = lastNumber_ + 1;
  layout_.Clear();
  lastFieldno_ = kNoField;
  for (const int fieldno : columns_) streams_[static_cast<std::size_t>(fieldno)].Clear();
  return static_cast<std::uint32_t>(text_.number);
}

void IndexWriter::AddWord(int fieldno, const char* word) {
  const auto field = static_cast<std::size_t>(fieldno);
  if (field >= isColumn_.size() || !isColumn_[field]) return;
  streams_[field].Add(word);
  lastFieldno_ = fieldno;
  layout_.AddWord(fieldno);
  ++text_.words;
}

void IndexWriter::AddAtSamePosition(int fieldno, const char* word) {
  const auto field = static_cast<std::size_t>(fieldno);
  if (field >= isColumn_.size() || !isColumn_[field]) return;
  streams_[field].AddAtSamePosition(word);
}

// It goes to the column of the words that it stands for, at the last of them.
void IndexWriter::AddExpression(int fieldno, std::string_view expression) {
  if (lastFieldno_ == kNoField) return;
  const std::string token = ExpressionToken(fieldno, expression);
  streams_[static_cast<std::size_t>(lastFieldno_)].AddAtSamePosition(token.c_str());
}

void IndexWriter::StartSentence() {
  layout_.StartSentence();
  ++text_.sentences;
}

void IndexWriter::StartParagraph() {
  layout_.StartParagraph();
  ++text_.paragraphs;
  ++text_.sentences;
}

const TextRecord& IndexWriter::EndText(const std::string& path, int fileType, std::int64_t bytes) {
  text_.path = path;
  text_.fileType = fileType;
  text_.bytes = bytes;
  if (!batch_) StartBatch();
  StoreWords();
  StoreText();
  lastNumber_ = static_cast<std::uint32_t>(text_.number);
  if (batchBytes_ >= kBatchBytes || ++batchTexts_ >= kBatchTexts) Commit();
  return text_;
}

void IndexWriter::StartBatch() {
  batch_.emplace(connection_);
  batchBytes_ = 0;
  batchTexts_ = 0;
  if (emptied_) return;
  EmptyIndex();
  emptied_ = true;
}

void IndexWriter::EmptyIndex() {
  connection_.Execute("DROP TABLE IF EXISTS words; DROP TABLE IF EXISTS texts");
  connection_.Execute(kCreateTexts);
  connection_.Execute("CREATE VIRTUAL TABLE words USING fts5(" + ColumnNames(columns_) +
                      "content='', tokenize='vemra')");
  // Merging in between costs more than one merge at the end; the words of a whole batch are sorted
  // in memory.
  connection_.Execute(
      "INSERT INTO words(words, rank) VALUES('automerge', 0);"
      "INSERT INTO words(words, rank) VALUES('hashsize', 16777216)");
  connection_.Execute("PRAGMA application_id = " + std::to_string(kIndexApplication) +
                      "; PRAGMA user_version = " + std::to_string(kIndexFormat));

  std::string insert = "INSERT INTO words(" + ColumnNames(columns_) + "rowid) VALUES(";
  for (std::size_t i = 0; i < columns_.size(); ++i) insert += "?, ";
  insertWords_.emplace(connection_, insert + "?)");
  insertText_.emplace(connection_, "INSERT INTO texts VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
}

void IndexWriter::StoreWords() {
  int index = 0;
  for (const int fieldno : columns_) {
    WordStream& stream = streams_[static_cast<std::size_t>(fieldno)];
    batchBytes_ += stream.GetSize();
    if (stream.GetSize() == 0) {
      insertWords_->BindNull(++index);
    } else {
      insertWords_->BindTerminated(++index, stream.Get());
    }
  }
  insertWords_->Bind(++index, text_.number);
  insertWords_->Run();
}

void IndexWriter::StoreText() {
  insertText_->Bind(1, text_.number);
  insertText_->BindText(2, text_.path);
  insertText_->Bind(3, text_.fileType);
  insertText_->BindBlob(4, text_.title);
  insertText_->BindBlob(5, text_.sortKey);
  insertText_->Bind(6, text_.bytes);
  insertText_->Bind(7, text_.words);
  insertText_->Bind(8, text_.sentences);
  insertText_->Bind(9, text_.paragraphs);
  insertText_->BindBlob(10, layout_.GetBytes());
  batchBytes_ += layout_.GetBytes().size();
  insertText_->Run();
}

void IndexWriter::Commit() {
  if (!batch_ && emptied_) return;
  if (!batch_) StartBatch();
  batch_->Commit();
  batch_.reset();
  ++parts_;
}

void IndexWriter::Finish() {
  Commit();
  if (parts_ > kPartsSearchedAsOne)
    connection_.Execute("INSERT INTO words(words) VALUES('optimize')");
  connection_.Execute("PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace vemra::engine
