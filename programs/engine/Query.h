#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Support/definition/FieldList.h"

namespace vemra {
class CTavoFileINI;
class TavoLangPack;
}  // namespace vemra

// The query language:
//
//   cat dog               texts that hold both words
//   cat OR dog            either; AND, OR and NOT are the words of the language pack, in any case
//   cat NOT dog           cat without dog; also "cat AND NOT dog"
//   (cat OR dog) food     parentheses
//   "cat and dog"         the words one after the other; * and ? are ordinary characters inside
//   wild* w?ld *card      * stands for any characters, ? for one
//   cat /s dog            both in one sentence; /p: in one paragraph; /5: at most 5 words apart, in
//                         either order. Beside an operator stands a word, a pattern, a phrase, or
//                         some of these in parentheses, joined by OR; a /s b /p c asks for a b that
//                         is in one sentence with an a and in one paragraph with a c
//   Title:= cat food;     texts of which a whole run of the field, such as the title, reads so; the
//                         field is to have the rule for expressions; quotes are allowed around it
//   Title: cat dog;       words of one field, up to the semicolon, the closing parenthesis, or the
//                         end; the field's name as defined, in any case
//
// The operators between words bind before NOT, NOT before AND, AND before OR. A word is cut and
// folded as the words of documents are, so well-known is one word; what holds no word character is
// passed over.
namespace vemra::engine {

// One place of a phrase: a folded word, a pattern, or "=" and an expression. The alternatives are
// the words of the index that may stand there: the word itself, what the pattern was expanded to,
// or the tokens of the expression.
struct QueryTerm {
  std::string text;
  bool isPattern = false;
  std::vector<std::string> alternatives;
  int sectionWords = 0;  // of an expression: it stands for so many first words of its section
};

// How two neighbours in a chain of operators stand to each other.
struct QueryRelation {
  enum class Kind { kSentence, kParagraph, kWords };

  Kind kind = Kind::kSentence;
  int words = 0;  // of kWords: how far apart they are at most, from 1
};

struct QueryNode {
  enum class Kind { kPhrase, kAnd, kOr, kNear };

  Kind kind = Kind::kPhrase;
  std::vector<QueryTerm> terms;  // of a phrase, in order, at least one
  CTavoFieldList columns;        // of a phrase: the fields whose words it is looked for in
  // Of kAnd and kOr, at least one; of kNear two or more, phrases or kOr of phrases.
  std::vector<QueryNode> children;
  std::vector<QueryRelation> relations;  // of kNear: of each child to the next
  std::vector<QueryNode> excluded;       // of kAnd: texts that match one of these do not match
};

// What the reader knows of the database. A field answers for the words of every field whose text is
// also indexed into it.
struct QueryLanguage {
  struct Field {
    std::string name;
    CTavoFieldList columns;
    CTavoFieldList expressions{};  // those of columns that keep expressions
  };

  const TavoLangPack* pack = nullptr;  // a loan
  CTavoFieldList general;              // what words without a field are looked for in
  std::vector<Field> fields;

  // The field of a name, in any case unless one has it exactly; null when there is none.
  const Field* FindField(std::string_view name) const;
};

QueryLanguage MakeQueryLanguage(const CTavoFileINI& definitions, const TavoLangPack* pack);

// What is wrong with a query and where: the offset of the byte in its text, 0 to its length.
class QueryError : public std::runtime_error {
 public:
  QueryError(std::size_t offset, const std::string& text)
      : std::runtime_error(text), offset_(offset) {}
  std::size_t GetOffset() const { return offset_; }

 private:
  std::size_t offset_;
};

inline constexpr std::size_t kMaxQueryBytes = 16384;
inline constexpr int kMaxQueryTerms = 256;
inline constexpr int kMaxWordsApart = 1000000;
// Parentheses and fields within each other. SQLite's own reader of expressions bears no more.
inline constexpr int kMaxQueryDepth = 10;

// text in the database's code page; any bytes, a NUL counts as a blank. Throws QueryError.
QueryNode ParseQuery(const std::string& text, const QueryLanguage& language);

// The tree as one line, for tests and messages: AND(cat OR("dog food" 1:x*) NOT(bird)); a phrase
// names its columns when they are not those of general.
std::string FormatQuery(const QueryNode& node, const CTavoFieldList& general);

}  // namespace vemra::engine
