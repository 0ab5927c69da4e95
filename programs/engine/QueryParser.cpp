#include <algorithm>
#include <charconv>
#include <optional>

#include "Support/text/Input.h"
#include "Support/text/LangPack.h"
#include "Support/text/Section.h"
#include "programs/engine/Query.h"
#include "programs/engine/WordStream.h"

namespace vemra::engine {
namespace {

constexpr std::size_t kMaxFieldName = 256;
constexpr const char* kBlanks = " \n\r\t\v\f";

class QueryInput : public TavoInput {
 public:
  const char* GetWhiteSpace() const override { return kBlanks; }
  const char* GetBreakWordAt() const override { return " \n\r\t\v\f()\";"; }
  const char* GetBreakIsWord() const override { return "()\";"; }
};

std::string_view Trim(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

// One node of a kind without needless levels.
QueryNode Join(QueryNode::Kind kind, std::vector<QueryNode> children) {
  if (children.size() == 1) return std::move(children.front());
  QueryNode node;
  node.kind = kind;
  for (QueryNode& child : children) {
    if (child.kind == kind && child.excluded.empty()) {
      std::move(child.children.begin(), child.children.end(), std::back_inserter(node.children));
    } else {
      node.children.push_back(std::move(child));
    }
  }
  return node;
}

QueryNode Exclude(QueryNode node, std::vector<QueryNode> excluded) {
  if (excluded.empty()) return node;
  if (node.kind != QueryNode::Kind::kAnd) {
    QueryNode parent;
    parent.kind = QueryNode::Kind::kAnd;
    parent.children.push_back(std::move(node));
    node = std::move(parent);
  }
  std::move(excluded.begin(), excluded.end(), std::back_inserter(node.excluded));
  return node;
}

constexpr const char* kRelationForms =
    "'/' needs s, p or a number behind it: /s in one sentence, /p in one paragraph, /5 within 5 "
    "words";
constexpr const char* kRelationOperands =
    "an operator between words stands beside words, phrases, and those in parentheses joined by OR";

bool IsPhrase(const QueryNode& node) {
  return node.kind == QueryNode::Kind::kPhrase && node.terms.front().sectionWords == 0;
}

bool MayBeNear(const QueryNode& node) {
  return IsPhrase(node) || (node.kind == QueryNode::Kind::kOr &&
                            std::all_of(node.children.begin(), node.children.end(), IsPhrase));
}

// /s, /p, /number, and a slash alone, which is refused. A slash in other words is punctuation.
bool IsRelation(std::string_view word) {
  if (word.empty() || word.front() != '/') return false;
  const std::string_view rest = word.substr(1);
  return rest == "s" || rest == "S" || rest == "p" || rest == "P" ||
         rest.find_first_not_of("0123456789") == std::string_view::npos;
}

// Recursive descent. A result of nothing means that only punctuation was there, which no text can
// be searched for.
class Parser {
 public:
  Parser(std::string text, const QueryLanguage& language)
      : length_(text.size()), language_(language) {
    input_.SetString(std::move(text));
    input_.EatWhiteSpace();
  }

  QueryNode ParseAll() {
    std::vector<QueryNode> parts;
    while (input_.AtEOF() == 0) {
      if (std::optional<QueryNode> part = ParseAlternatives(language_.general)) {
        parts.push_back(std::move(*part));
      }
      if (Next() == ')') Fail(Offset(), "this ')' closes nothing");
      if (Next() == ';') input_.CutWord();
    }
    if (parts.empty()) Fail(0, "there is no word to search for");
    return Join(QueryNode::Kind::kAnd, std::move(parts));
  }

 private:
  enum class Operator { kNone, kAnd, kOr, kNot };

  [[noreturn]] static void Fail(std::size_t offset, const std::string& text) {
    throw QueryError(offset, text);
  }

  std::size_t Offset() const { return length_ - input_.GetUnread().size(); }
  char Next() const { return input_.GetFirstChar(); }
  bool AtEnd() const { return input_.AtEOF() != 0 || Next() == ')' || Next() == ';'; }

  Operator NextOperator() const {
    const std::string word = input_.GetFirstWord();
    if (language_.pack->IsAndWord(word) != 0) return Operator::kAnd;
    if (language_.pack->IsOrWord(word) != 0) return Operator::kOr;
    if (language_.pack->IsNotWord(word) != 0) return Operator::kNot;
    return Operator::kNone;
  }

  // A OR B OR ...
  std::optional<QueryNode> ParseAlternatives(const CTavoFieldList& columns) {
    std::vector<QueryNode> alternatives;
    std::optional<QueryNode> node = ParseRequired(columns);
    while (!AtEnd()) {  // at an OR
      const std::size_t offset = Offset();
      input_.CutWord();
      if (!node) Fail(offset, "there must be a word before OR");
      alternatives.push_back(std::move(*node));
      node = ParseRequired(columns);
      if (!node) Fail(offset, "there must be a word after OR");
    }
    if (!node) return node;
    alternatives.push_back(std::move(*node));
    return Join(QueryNode::Kind::kOr, std::move(alternatives));
  }

  // A B AND C NOT D ..., up to an OR or the end
  std::optional<QueryNode> ParseRequired(const CTavoFieldList& columns) {
    std::vector<QueryNode> required;
    std::vector<QueryNode> excluded;
    std::size_t notOffset = 0;
    while (!AtEnd() && NextOperator() != Operator::kOr) {
      const bool afterAnd = NextOperator() == Operator::kAnd;
      const std::size_t andOffset = Offset();
      if (afterAnd) {
        if (required.empty()) Fail(andOffset, "there must be a word before AND");
        input_.CutWord();
      }
      if (!AtEnd() && NextOperator() == Operator::kNot) {
        notOffset = Offset();
        input_.CutWord();
        excluded.push_back(ParseOperand(columns, notOffset, "NOT"));
      } else if (afterAnd) {
        required.push_back(ParseOperand(columns, andOffset, "AND"));
      } else if (std::optional<QueryNode> item = ParseItem(columns)) {
        required.push_back(std::move(*item));
      }
    }
    if (required.empty()) {
      if (!excluded.empty()) Fail(notOffset, "NOT needs another word whose texts it narrows");
      return std::nullopt;
    }
    return Exclude(Join(QueryNode::Kind::kAnd, std::move(required)), std::move(excluded));
  }

  // What an operator works on.
  QueryNode ParseOperand(const CTavoFieldList& columns, std::size_t offset, const char* name) {
    std::optional<QueryNode> item;
    if (!AtEnd() && NextOperator() == Operator::kNone) item = ParseItem(columns);
    if (!item) Fail(offset, std::string("there must be a word after ") + name);
    return std::move(*item);
  }

  bool AtRelation() const { return !AtEnd() && IsRelation(input_.GetFirstWord()); }

  // One part, or several with operators between words.
  std::optional<QueryNode> ParseItem(const CTavoFieldList& columns) {
    const std::size_t offset = Offset();
    if (AtRelation()) Fail(offset, "there must be a word before " + input_.GetFirstWord());
    std::optional<QueryNode> part = ParsePart(columns);
    if (!part || !AtRelation()) return part;
    QueryNode chain;
    chain.kind = QueryNode::Kind::kNear;
    AddNear(chain, std::move(*part), offset);
    while (AtRelation()) ParseRelation(chain, columns);
    return chain;
  }

  void ParseRelation(QueryNode& chain, const CTavoFieldList& columns) {
    const std::size_t relationOffset = Offset();
    const std::string relation = input_.CutWord();
    chain.relations.push_back(ReadRelation(relation, relationOffset));
    const std::size_t offset = Offset();
    std::optional<QueryNode> part;
    if (!AtEnd() && !AtRelation() && NextOperator() == Operator::kNone) part = ParsePart(columns);
    if (!part) Fail(relationOffset, "there must be a word after " + relation);
    AddNear(chain, std::move(*part), offset);
  }

  static void AddNear(QueryNode& chain, QueryNode part, std::size_t offset) {
    if (!MayBeNear(part)) Fail(offset, kRelationOperands);
    chain.children.push_back(std::move(part));
  }

  static QueryRelation ReadRelation(std::string_view word, std::size_t offset) {
    word.remove_prefix(1);
    if (word.empty()) Fail(offset, kRelationForms);
    if (word == "s" || word == "S") return {QueryRelation::Kind::kSentence, 0};
    if (word == "p" || word == "P") return {QueryRelation::Kind::kParagraph, 0};
    QueryRelation relation{QueryRelation::Kind::kWords, 0};
    const auto result = std::from_chars(word.data(), word.data() + word.size(), relation.words);
    if (result.ec != std::errc() || relation.words < 1 || relation.words > kMaxWordsApart) {
      Fail(offset, "words are from 1 to " + std::to_string(kMaxWordsApart) + " apart");
    }
    return relation;
  }

  std::optional<QueryNode> ParsePart(const CTavoFieldList& columns) {
    if (Next() == '(') return ParseParentheses(columns);
    if (Next() == '"') return ParsePhrase(columns);
    std::size_t nameLength = 0;
    if (const auto* field = FindField(nameLength)) return ParseField(*field, nameLength);
    return ParseWord(columns);
  }

  std::optional<QueryNode> ParseParentheses(const CTavoFieldList& columns) {
    const std::size_t offset = Offset();
    Enter(offset);
    input_.CutWord();
    std::optional<QueryNode> node = ParseAlternatives(columns);
    if (input_.AtEOF() != 0) Fail(offset, "this '(' is not closed");
    if (Next() == ';') Fail(Offset(), "this ';' ends no field");
    if (!node) Fail(offset, "there is no word between these parentheses");
    input_.CutWord();
    --depth_;
    return node;
  }

  std::optional<QueryNode> ParseField(const QueryLanguage::Field& field, std::size_t nameLength) {
    const std::size_t offset = Offset();
    Enter(offset);
    input_.MoveOn(static_cast<int>(nameLength) + 1);  // and the colon
    const bool isExpression = Next() == '=';
    if (isExpression) input_.MoveOn(1);
    input_.EatWhiteSpace();
    std::optional<QueryNode> node =
        isExpression ? ParseExpression(field, offset) : ParseAlternatives(field.columns);
    if (!node) Fail(offset, "there is no word for this field");
    if (Next() == ';') input_.CutWord();
    --depth_;
    return node;
  }

  // A whole run of the field's text, in quotes or up to the end of the field.
  std::optional<QueryNode> ParseExpression(const QueryLanguage::Field& field, std::size_t offset) {
    if (field.expressions.IsEmpty() != 0) {
      Fail(offset, "the field " + field.name + " keeps no expressions");
    }
    std::string text;
    if (Next() == '"') {
      const std::size_t quote = Offset();
      if (input_.GetQuotedStringOrWord(text, 1) == 0) Fail(quote, "this '\"' is not closed");
      text = text.substr(1, text.size() - 2);
    } else {
      const std::string_view unread = input_.GetUnread();
      text = Trim(unread.substr(0, unread.find_first_of(");")));
      input_.MoveOn(static_cast<int>(std::min(unread.find_first_of(");"), unread.size())));
    }
    input_.EatWhiteSpace();
    if (!AtEnd()) Fail(Offset(), "an expression ends with ';'");
    return MakeExpression(field.expressions, text, offset);
  }

  // The index holds it in the column of the words that it stands for, whichever that is.
  std::optional<QueryNode> MakeExpression(const CTavoFieldList& fields, const std::string& text,
                                          std::size_t offset) {
    TavoSection section(nullptr, text, language_.pack);
    if (section.GetFirstWord() == nullptr) return std::nullopt;
    QueryNode node;
    for (const QueryLanguage::Field& field : language_.fields) node.columns |= field.columns;
    QueryTerm term;
    const std::string expression = section.MakeExpression(&term.sectionWords);
    POSITION position = fields.GetStartPosition();
    while (position != 0) {
      term.alternatives.push_back(ExpressionToken(fields.GetNextFieldno(position), expression));
    }
    term.text = '=' + expression;
    CountTerm(offset);
    node.terms.push_back(std::move(term));
    return node;
  }

  void Enter(std::size_t offset) {
    if (++depth_ > kMaxQueryDepth) Fail(offset, "parentheses and fields are nested too deeply");
  }

  // The field whose name and colon come next.
  const QueryLanguage::Field* FindField(std::size_t& nameLength) const {
    const std::string_view unread = input_.GetUnread().substr(0, kMaxFieldName);
    nameLength = unread.find_first_of("():;\"");
    if (nameLength == std::string_view::npos || unread[nameLength] != ':') return nullptr;
    return language_.FindField(Trim(unread.substr(0, nameLength)));
  }

  std::optional<QueryNode> ParsePhrase(const CTavoFieldList& columns) {
    const std::size_t offset = Offset();
    std::string quoted;
    if (input_.GetQuotedStringOrWord(quoted, 1) == 0) Fail(offset, "this '\"' is not closed");
    input_.EatWhiteSpace();
    return MakePhrase(quoted.substr(1, quoted.size() - 2), columns, offset);
  }

  std::optional<QueryNode> ParseWord(const CTavoFieldList& columns) {
    const std::size_t offset = Offset();
    const std::string word = input_.CutWord();
    if (word.size() > 1 && word.back() == ':') {
      Fail(offset, "no field is named " + word.substr(0, word.size() - 1));
    }
    if (word.find_first_of("*?") != std::string::npos) return MakePattern(word, columns, offset);
    return MakePhrase(word, columns, offset);
  }

  // Cut and folded exactly as the words of a document.
  std::optional<QueryNode> MakePhrase(const std::string& text, const CTavoFieldList& columns,
                                      std::size_t offset) {
    QueryNode node;
    node.columns = columns;
    TavoSection section(nullptr, text, language_.pack);
    for (TavoWord* word = section.GetFirstWord(); word != nullptr;
         word = section.GetNextWord(word)) {
      std::string folded = word->GetStriptWord();
      AddTerm(node, language_.pack->ToIndex(folded), false, offset);
    }
    if (node.terms.empty()) return std::nullopt;
    return node;
  }

  bool IsWordCharacter(char c) const {
    return language_.pack->IsAlnum(static_cast<unsigned char>(c)) != 0;
  }

  std::optional<QueryNode> MakePattern(const std::string& word, const CTavoFieldList& columns,
                                       std::size_t offset) {
    if (std::none_of(word.begin(), word.end(), [this](char c) { return IsWordCharacter(c); })) {
      Fail(offset, "* and ? need a letter or a digit beside them");
    }
    // Punctuation around a word is no part of it.
    const auto counts = [this](char c) { return c == '*' || c == '?' || IsWordCharacter(c); };
    const auto begin = std::find_if(word.begin(), word.end(), counts);
    const auto end = std::find_if(word.rbegin(), word.rend(), counts).base();
    std::string pattern(begin, end);
    for (char& c : pattern) {
      if (c == '*' || c == '?') continue;
      c = static_cast<char>(language_.pack->ToIndex(static_cast<unsigned char>(c)));
    }
    QueryNode node;
    node.columns = columns;
    AddTerm(node, pattern, true, offset);
    return node;
  }

  void AddTerm(QueryNode& node, const std::string& text, bool isPattern, std::size_t offset) {
    CountTerm(offset);
    QueryTerm term{text, isPattern, {}};
    if (!isPattern) term.alternatives.push_back(text);
    node.terms.push_back(std::move(term));
  }

  void CountTerm(std::size_t offset) {
    if (++terms_ > kMaxQueryTerms) Fail(offset, "there are too many words");
  }

  QueryInput input_;
  std::size_t length_;
  const QueryLanguage& language_;
  int depth_ = 0;
  int terms_ = 0;
};

}  // namespace

QueryNode ParseQuery(const std::string& text, const QueryLanguage& language) {
  if (text.size() > kMaxQueryBytes) throw QueryError(kMaxQueryBytes, "the query is too long");
  std::string readable = text;
  std::replace(readable.begin(), readable.end(), '\0', ' ');
  return Parser(std::move(readable), language).ParseAll();
}

}  // namespace vemra::engine
