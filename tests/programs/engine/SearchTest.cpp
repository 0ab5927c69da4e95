#include "programs/engine/Search.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "programs/engine/EngineError.h"
#include "programs/engine/Expansion.h"
#include "programs/engine/IndexWriter.h"
#include "tests/TempFolder.h"
#include "tests/programs/engine/PlainSearch.h"

namespace vemra::engine {
namespace {

constexpr int kFields = 3;

using test::PlainText;
using test::PlainWord;
using Place = std::pair<int, int>;  // field, position

CTavoFieldList ListOf(std::initializer_list<int> fields) {
  CTavoFieldList list;
  for (const int field : fields) list.Set(field);
  return list;
}

void AddText(IndexWriter& writer, const PlainText& text) {
  writer.BeginText();
  PlainWord before{0, {}};
  for (const PlainWord& word : text) {
    if (word.paragraph != before.paragraph) {
      writer.StartParagraph();
    } else if (word.sentence != before.sentence) {
      writer.StartSentence();
    }
    before = word;
    writer.AddWord(word.field, word.forms[0]);
    for (std::size_t i = 1; i < word.forms.size(); ++i) {
      writer.AddAtSamePosition(word.field, word.forms[i]);
    }
  }
  writer.EndText("Z:\\a.txt", 0, 1);
}

QueryNode Phrase(std::vector<std::string> words, const CTavoFieldList& columns) {
  QueryNode node;
  node.columns = columns;
  for (std::string& word : words) {
    const bool isPattern = word.find_first_of("*?") != std::string::npos;
    node.terms.push_back({word, isPattern, {}});
    if (!isPattern) node.terms.back().alternatives.push_back(word);
  }
  return node;
}

bool Matches(const QueryNode& node, const PlainText& text, std::set<Place>& hits) {
  test::PlainHits words;
  if (!test::MatchPlainly(node, text, words)) return false;
  std::map<int, int> counts;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int position = counts[text[i].field]++;
    if (words.count(i) == 1) hits.emplace(text[i].field, position);
  }
  return true;
}

class RandomSearch {
 public:
  explicit RandomSearch(unsigned seed) : random_(seed) {}

  std::string Word() { return std::string(1, "abcdef"[random_() % 6]); }

  PlainText MakeText() {
    PlainText text;
    PlainWord next{0, {}, 1, 1};
    for (unsigned i = random_() % 18; i > 0; --i) {
      const std::string first = Word();
      const std::string second = Word();
      next.forms = {first};
      if (random_() % 4 == 0) next.forms = {first + "-" + second, first, second};
      text.push_back(next);
      if (random_() % 3 == 0) next.field = static_cast<int>(random_() % kFields);
      if (random_() % 4 == 0) ++next.sentence;
      if (random_() % 10 == 0) {
        ++next.sentence;
        ++next.paragraph;
      }
    }
    return text;
  }

  QueryNode MakeQuery(int depth) {
    if (depth == 0 || random_() % 4 == 0) return MakePhrase();
    if (random_() % 4 == 0) return MakeNear();
    QueryNode node;
    node.kind = random_() % 2 == 0 ? QueryNode::Kind::kAnd : QueryNode::Kind::kOr;
    for (unsigned i = random_() % 3 + 1; i > 0; --i) node.children.push_back(MakeQuery(depth - 1));
    if (node.kind == QueryNode::Kind::kAnd && random_() % 2 == 0) {
      for (unsigned i = random_() % 2 + 1; i > 0; --i) {
        node.excluded.push_back(MakeQuery(depth - 1));
      }
    }
    return node;
  }

 private:
  QueryNode MakeNear() {
    QueryNode node;
    node.kind = QueryNode::Kind::kNear;
    node.relations.resize(random_() % 2 + 1);
    for (QueryRelation& relation : node.relations) {
      relation = {static_cast<QueryRelation::Kind>(random_() % 3),
                  static_cast<int>(random_() % 4) + 1};
    }
    for (std::size_t i = 0; i <= node.relations.size(); ++i) {
      node.children.push_back(MakePhrase());
      if (random_() % 3 != 0) continue;
      QueryNode either;
      either.kind = QueryNode::Kind::kOr;
      either.children = {node.children.back(), MakePhrase()};
      node.children.back() = either;
    }
    return node;
  }

  QueryNode MakePhrase() {
    std::vector<std::string> words{Word()};
    if (random_() % 3 == 0) words.push_back(Word());
    if (random_() % 5 == 0) words[0] += random_() % 2 == 0 ? "*" : "-?";
    CTavoFieldList columns = ListOf({0, 1, 2});
    if (random_() % 3 == 0) columns.Reset(static_cast<int>(random_() % kFields));
    return Phrase(words, columns);
  }

  std::mt19937 random_;
};

// Texts found and words hit by the index are those of the plain way, for random texts and queries.
TEST(Search, FindsWhatThePlainWayFinds) {
  test::TempFolder folder;
  RandomSearch make(11);
  std::vector<PlainText> texts(60);
  {
    IndexWriter writer(folder.Path("a.vix"), ListOf({0, 1, 2}));
    for (PlainText& text : texts) AddText(writer, text = make.MakeText());
    writer.Finish();
  }
  IndexDatabase index(folder.Path("a.vix"));
  int matches = 0;
  for (int round = 0; round < 500; ++round) {
    QueryNode query = make.MakeQuery(3);
    ASSERT_TRUE(ExpandPatterns(index, query, 200).empty());
    SCOPED_TRACE(FormatQuery(query, CTavoFieldList()));
    Search search(index, query);
    std::set<std::int64_t> found;
    for (const FoundText& text : search.Find(100, FieldWeights()).best) found.insert(text.number);
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const auto number = static_cast<std::int64_t>(i) + 1;
      std::set<Place> expected;
      ASSERT_EQ(found.count(number) == 1, Matches(query, texts[i], expected)) << "text " << number;
      std::set<Place> hits;
      for (const Hit& hit : search.FindHits(number)) hits.emplace(hit.fieldno, hit.position);
      ASSERT_EQ(hits, expected) << "text " << number;
      matches += expected.empty() ? 0 : 1;
    }
  }
  EXPECT_GT(matches, 2000);
}

// As deep and as wide as the reader of queries lets them be.
TEST(Search, BearsTheLargestQueries) {
  test::TempFolder folder;
  IndexWriter(folder.Path("a.vix"), ListOf({0, 1})).Finish();
  IndexDatabase index(folder.Path("a.vix"));
  const QueryNode word = Phrase({"a", "b"}, ListOf({0}));
  QueryNode deep = word;
  for (int depth = 0; depth <= kMaxQueryDepth; ++depth) {
    QueryNode both;
    both.kind = QueryNode::Kind::kAnd;
    both.children = {word, word};
    both.excluded = {word, deep};
    QueryNode near;
    near.kind = QueryNode::Kind::kNear;
    near.relations.resize(2);
    QueryNode either;
    either.kind = QueryNode::Kind::kOr;
    either.children = {word, word};
    near.children = {word, either, word};
    either.children = {near, both};
    deep = either;
  }
  EXPECT_EQ(Search(index, deep).Find(10, FieldWeights()).total, 0);
  QueryNode wide;
  wide.kind = QueryNode::Kind::kOr;
  wide.children.assign(kMaxQueryTerms, word);
  wide.children.push_back(word);
  EXPECT_EQ(Search(index, wide).Find(10, FieldWeights()).total, 0);
  wide.kind = QueryNode::Kind::kAnd;
  EXPECT_EQ(Search(index, wide).Find(10, FieldWeights()).total, 0);
}

TEST(Search, PutsTheBestFirstAndKeepsAsManyAsAsked) {
  test::TempFolder folder;
  {
    IndexWriter writer(folder.Path("a.vix"), ListOf({0, 1}));
    for (const int field : {0, 1, 0}) AddText(writer, {{field, {"cat"}}, {field, {"x"}}});
    for (int i = 0; i < 9; ++i) AddText(writer, {{0, {"x"}}, {0, {"y"}}});
    writer.Finish();
  }
  IndexDatabase index(folder.Path("a.vix"));
  FieldWeights weights;
  weights.byField[1] = 8;
  const FoundTexts found = Search(index, Phrase({"cat"}, ListOf({0, 1}))).Find(2, weights);
  EXPECT_EQ(found.total, 3);
  ASSERT_EQ(found.best.size(), 2U);
  EXPECT_EQ(found.best[0].number, 2);
  EXPECT_EQ(found.best[1].number, 1);
}

TEST(Expansion, TakesWordsOfTheColumnsUpToTheLimit) {
  test::TempFolder folder;
  {
    IndexWriter writer(folder.Path("a.vix"), ListOf({0, 1}));
    AddText(
        writer,
        {{0, {"car"}}, {0, {"cat"}}, {0, {"cow"}}, {0, {"\xe9t\xe9"}}, {1, {"cab"}}, {1, {"cat"}}});
    writer.Finish();
  }
  IndexDatabase index(folder.Path("a.vix"));
  struct Row {
    const char* pattern;
    int column;
    std::uint32_t limit;
    std::vector<std::string> words;
    bool cut;
  };
  const Row rows[] = {
      {"c*", 0, 9, {"car", "cat", "cow"}, false},
      {"c*", 1, 9, {"cab", "cat"}, false},
      {"c*", 0, 2, {"car", "cat"}, true},
      {"c*", 0, 3, {"car", "cat", "cow"}, false},
      {"?at", 0, 9, {"cat"}, false},
      {"*\xe9", 0, 9, {"\xe9t\xe9"}, false},
      {"ca", 0, 9, {}, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.pattern);
    QueryNode node = Phrase({row.pattern}, ListOf({row.column}));
    node.terms[0].isPattern = true;
    node.terms[0].alternatives.clear();
    EXPECT_EQ(!ExpandPatterns(index, node, row.limit).empty(), row.cut);
    EXPECT_EQ(node.terms[0].alternatives, row.words);
  }
}

}  // namespace
}  // namespace vemra::engine
