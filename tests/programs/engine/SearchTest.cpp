#include "programs/engine/Search.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "programs/engine/EngineError.h"
#include "programs/engine/Expansion.h"
#include "programs/engine/IndexWriter.h"
#include "tests/TempFolder.h"

namespace vemra::engine {
namespace {

constexpr int kFields = 3;

// A text as the index is given it: by field the words, each with the parts of a compound.
using Text = std::map<int, std::vector<std::vector<std::string>>>;
using Place = std::pair<int, int>;  // field, position

CTavoFieldList ListOf(std::initializer_list<int> fields) {
  CTavoFieldList list;
  for (const int field : fields) list.Set(field);
  return list;
}

void AddText(IndexWriter& writer, const Text& text) {
  writer.BeginText();
  for (const auto& [field, words] : text) {
    for (const auto& word : words) {
      writer.AddWord(field, word[0]);
      for (std::size_t i = 1; i < word.size(); ++i) writer.AddAtSamePosition(field, word[i]);
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

// The plain way to match, against which the index is held.
bool Matches(const QueryNode& node, const Text& text, std::set<Place>& hits);

bool MatchesPhrase(const QueryNode& node, const Text& text, std::set<Place>& hits) {
  bool found = false;
  for (const auto& [field, words] : text) {
    if (node.columns.IsSet(field) == 0) continue;
    for (std::size_t at = 0; at + node.terms.size() <= words.size(); ++at) {
      bool here = true;
      for (std::size_t i = 0; i < node.terms.size() && here; ++i) {
        const auto& allowed = node.terms[i].alternatives;
        const auto& there = words[at + i];
        here = std::find_first_of(there.begin(), there.end(), allowed.begin(), allowed.end()) !=
               there.end();
      }
      if (!here) continue;
      found = true;
      for (std::size_t i = 0; i < node.terms.size(); ++i) {
        hits.emplace(field, static_cast<int>(at + i));
      }
    }
  }
  return found;
}

bool Matches(const QueryNode& node, const Text& text, std::set<Place>& hits) {
  if (node.kind == QueryNode::Kind::kPhrase) return MatchesPhrase(node, text, hits);
  std::set<Place> own;
  std::size_t matched = 0;
  for (const QueryNode& child : node.children) matched += Matches(child, text, own) ? 1 : 0;
  if (matched == 0) return false;
  if (node.kind == QueryNode::Kind::kAnd) {
    if (matched != node.children.size()) return false;
    std::set<Place> ignored;
    for (const QueryNode& child : node.excluded) {
      if (Matches(child, text, ignored)) return false;
    }
  }
  hits.insert(own.begin(), own.end());
  return true;
}

class RandomSearch {
 public:
  explicit RandomSearch(unsigned seed) : random_(seed) {}

  std::string Word() { return std::string(1, "abcdef"[random_() % 6]); }

  Text MakeText() {
    Text text;
    for (int field = 0; field < kFields; ++field) {
      for (unsigned i = random_() % 6; i > 0; --i) {
        const std::string first = Word();
        const std::string second = Word();
        if (random_() % 4 == 0) {
          text[field].push_back({first + "-" + second, first, second});
        } else {
          text[field].push_back({first});
        }
      }
    }
    return text;
  }

  QueryNode MakeQuery(int depth) {
    if (depth == 0 || random_() % 3 == 0) return MakePhrase();
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
  std::vector<Text> texts(40);
  {
    IndexWriter writer(folder.Path("a.vix"), ListOf({0, 1, 2}));
    for (Text& text : texts) AddText(writer, text = make.MakeText());
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
    QueryNode either;
    either.kind = QueryNode::Kind::kOr;
    either.children = {word, both};
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
    AddText(writer, {{0, {{"cat"}, {"x"}}}});
    AddText(writer, {{1, {{"cat"}, {"x"}}}});
    AddText(writer, {{0, {{"cat"}, {"x"}}}});
    for (int i = 0; i < 9; ++i) AddText(writer, {{0, {{"x"}, {"y"}}}});
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
    AddText(writer, {{0, {{"car"}, {"cat"}, {"cow"}, {"\xe9t\xe9"}}}, {1, {{"cab"}, {"cat"}}}});
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
