#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Support/definition/FieldList.h"
#include "Support/foundation/File.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Layout.h"
#include "programs/engine/Sqlite.h"
#include "programs/engine/WordStream.h"

namespace vemra::engine {

// Builds an index anew, text by text. Texts are stored in batches, each in one transaction, so that
// whatever ends the program leaves an index of whole texts; the first batch takes the place of the
// old index. While a writer lives every other one is refused, and searches go on reading.
//
// Memory: the words of one text and of one batch, kept within a few ten megabytes save for the
// words of a single longer text. Used by one thread. Throws EngineError.
class IndexWriter {
 public:
  // path of the index, in the Windows form, in an existing folder; fields: those that words are
  // kept of. kLocked while there is another writer.
  IndexWriter(const std::string& path, const CTavoFieldList& fields);
  // Texts that were not committed are lost.
  ~IndexWriter() = default;
  IndexWriter(const IndexWriter&) = delete;
  IndexWriter& operator=(const IndexWriter&) = delete;

  // Begins a text; what an unfinished one has left is forgotten. Returns its number, from 1: that
  // of an unfinished text is given again.
  std::uint32_t BeginText();
  // The parts of the current text. A word ends with a NUL; of one longer than WordStream::kMaxWord
  // only so much is kept, and compared. A word of a field that is not kept is dropped.
  void AddWord(int fieldno, const char* word);
  void AddAtSamePosition(int fieldno, const char* word);
  // An expression of a field, which stands for the words that were just added.
  void AddExpression(int fieldno, std::string_view expression);
  // The next word begins a sentence, or a paragraph and with it a sentence.
  void StartSentence();
  void StartParagraph();
  void SetTitle(std::string_view title) { text_.title = title; }
  void SetSortKey(std::string_view key) { text_.sortKey = key; }
  // Stores the text and returns what is known of it. path in the Windows form.
  const TextRecord& EndText(const std::string& path, int fileType, std::int64_t bytes);
  // Stores the texts since the last commit. With no text at all the index becomes empty.
  void Commit();
  // Commits and puts the index in the order that makes searches fast.
  void Finish();

 private:
  static constexpr int kNoField = -1;

  static TavoFile LockIndex(const std::string& path);
  void PrepareFile();
  void StartBatch();
  void EmptyIndex();
  void StoreWords();
  void StoreText();

  TavoFile lock_;
  std::string path_;
  Connection connection_;
  std::vector<int> columns_;
  std::array<bool, kMaxFields> isColumn_{};
  bool emptied_ = false;
  std::uint32_t lastNumber_ = 0;
  TextRecord text_;                               // the current one
  std::array<WordStream, kMaxFields> streams_{};  // its words by field
  int lastFieldno_ = kNoField;                    // that its last word was added to
  LayoutWriter layout_;                           // and how they follow each other
  std::size_t batchBytes_ = 0;
  int batchTexts_ = 0;
  int parts_ = 0;  // of the index, one a batch
  std::optional<Statement> insertWords_;
  std::optional<Statement> insertText_;
  std::optional<Transaction> batch_;
};

}  // namespace vemra::engine
