#include "programs/engine/Dictionary.h"

#include "programs/engine/Expression.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Query.h"
#include "programs/engine/Vocabulary.h"

namespace vemra::engine {
namespace {

constexpr std::int64_t kInSeveralFields = -1;  // a number of texts that is still to be counted

// A text that holds the word in two fields counts once, which only the texts themselves tell.
class TextCounter {
 public:
  TextCounter(IndexDatabase& index, const CTavoFieldList& columns)
      : columns_(columns),
        count_(index.GetConnection(), "SELECT count(*) FROM words WHERE words MATCH ?") {
    for (const int fieldno : index.GetColumns()) indexColumns_.Set(fieldno);
  }

  std::int64_t Count(const std::string& word) {
    QueryNode phrase;
    phrase.columns = columns_;
    phrase.terms.push_back({word, false, {word}});
    const std::string expression = WriteExpression(phrase, indexColumns_);
    count_.BindText(1, expression);
    const std::int64_t texts = count_.Step() ? count_.Number(0) : 0;
    count_.Reset();
    return texts;
  }

 private:
  CTavoFieldList columns_;
  CTavoFieldList indexColumns_;
  Statement count_;
};

}  // namespace

DictionaryPart ReadDictionary(IndexDatabase& index, const std::string& prefix,
                              const CTavoFieldList& columns, int count) {
  DictionaryPart part;
  VocabularyWalk walk(index);
  walk.Seek(prefix);
  while (walk.Next()) {
    if (walk.GetFieldno() < 0 || columns.IsSet(walk.GetFieldno()) == 0) continue;
    std::vector<DictionaryWord>& words = part.words;
    if (!words.empty() && words.back().word == walk.GetWord()) {
      words.back().occurrences += walk.CountOccurrences();
      words.back().texts = kInSeveralFields;
      continue;
    }
    if (static_cast<int>(words.size()) == count) {
      part.hasMore = true;
      break;
    }
    words.push_back({std::string(walk.GetWord()), walk.CountTexts(), walk.CountOccurrences()});
  }
  walk.Stop();
  TextCounter texts(index, columns);
  for (DictionaryWord& word : part.words) {
    if (word.texts == kInSeveralFields) word.texts = texts.Count(word.word);
  }
  return part;
}

}  // namespace vemra::engine
