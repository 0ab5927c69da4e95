#include "programs/engine/Vocabulary.h"

#include "programs/engine/IndexDatabase.h"
#include "programs/engine/WordStream.h"

namespace vemra::engine {
namespace {

Connection& OpenVocabulary(IndexDatabase& index) {
  index.GetConnection().Execute(
      "CREATE VIRTUAL TABLE IF NOT EXISTS temp.vocabulary USING fts5vocab('main', 'words', 'col')");
  return index.GetConnection();
}

}  // namespace

VocabularyWalk::VocabularyWalk(IndexDatabase& index)
    : words_(OpenVocabulary(index),
             "SELECT term, col, doc, cnt FROM temp.vocabulary WHERE term >= ? ORDER BY term") {}

void VocabularyWalk::Seek(const std::string& prefix) {
  prefix_ = prefix;
  words_.Reset();
  words_.BindText(1, prefix_);
}

bool VocabularyWalk::Next() {
  while (words_.Step() && GetWord().starts_with(prefix_)) {
    if (!IsExpressionToken(GetWord())) return true;
  }
  words_.Reset();
  return false;
}

int VocabularyWalk::GetFieldno() const {
  return FieldOfColumn(words_.Bytes(1));
}

}  // namespace vemra::engine
