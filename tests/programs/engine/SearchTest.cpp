#include "programs/engine/Search.h"

#include <gtest/gtest.h>

#include "programs/engine/EngineError.h"
#include "programs/engine/Expansion.h"
#include "programs/engine/IndexWriter.h"
#include "tests/TempFolder.h"
#include "tests/programs/engine/Queries.h"

// What random queries find and mark in random texts is held against the plain way to match where
// the program shows documents.
namespace vemra::engine {
namespace {

using test::Group;
using test::ListOf;
using test::Phrase;
using Kind = QueryNode::Kind;
using Text = std::vector<std::pair<int, const char*>>;  // field and word

// An index of two fields.
class SearchTest : public ::testing::Test {
 protected:
  std::string Index(const std::vector<Text>& texts) const {
    IndexWriter writer(folder_.Path("a.vix"), ListOf({0, 1}));
    for (const Text& text : texts) {
      writer.BeginText();
      for (const auto& [field, word] : text) writer.AddWord(field, word);
      writer.EndText("Z:\\a.txt", 0, 1);
    }
    writer.Finish();
    return folder_.Path("a.vix");
  }

  test::TempFolder folder_;
};

// As deep and as wide as the reader of queries lets them be.
TEST_F(SearchTest, BearsTheLargestQueries) {
  IndexDatabase index(Index({}));
  const QueryNode word = Phrase({"a", "b"}, ListOf({0}));
  QueryNode deep = word;
  for (int depth = 0; depth <= kMaxQueryDepth; ++depth) {
    QueryNode both = Group(Kind::kAnd, {word, word});
    both.excluded = {word, deep};
    QueryNode near = Group(Kind::kNear, {word, Group(Kind::kOr, {word, word}), word});
    near.relations.resize(2);
    deep = Group(Kind::kOr, {near, both});
  }
  const std::vector<QueryNode> words(kMaxQueryTerms + 1, word);
  for (const QueryNode& query : {deep, Group(Kind::kOr, words), Group(Kind::kAnd, words)}) {
    EXPECT_EQ(Search(index, query).Find(10, FieldWeights()).total, 0);
  }
}

TEST_F(SearchTest, PutsTheBestFirstAndKeepsAsManyAsAsked) {
  std::vector<Text> texts = {
      {{0, "cat"}, {0, "x"}}, {{1, "cat"}, {1, "x"}}, {{0, "cat"}, {0, "x"}}};
  texts.resize(12, {{0, "x"}, {0, "y"}});
  IndexDatabase index(Index(texts));
  FieldWeights weights;
  weights.byField[1] = 8;
  Search search(index, Phrase({"cat"}, ListOf({0, 1})));
  const FoundTexts found = search.Find(2, weights);
  EXPECT_EQ(found.total, 3);
  ASSERT_EQ(found.best.size(), 2U);
  EXPECT_EQ(found.best[0].number, 2);
  EXPECT_EQ(found.best[1].number, 1);
  for (const int number : {3, 2, 1}) EXPECT_EQ(search.FindHits(number).size(), 1U) << number;
}

TEST_F(SearchTest, ExpandsToWordsOfTheColumnsUpToTheLimit) {
  IndexDatabase index(
      Index({{{0, "car"}, {0, "cat"}, {0, "cow"}, {0, "\xe9t\xe9"}, {1, "cab"}, {1, "cat"}}}));
  const struct {
    const char* pattern;
    int column;
    std::uint32_t limit;
    std::vector<std::string> words;
    bool cut;
  } rows[] = {
      {"c*", 0, 3, {"car", "cat", "cow"}, false}, {"c*", 1, 9, {"cab", "cat"}, false},
      {"c*", 0, 2, {"car", "cat"}, true},         {"?at", 0, 9, {"cat"}, false},
      {"*\xe9", 0, 9, {"\xe9t\xe9"}, false},      {"ca?x", 0, 9, {}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.pattern);
    QueryNode node = Phrase({row.pattern}, ListOf({row.column}));
    EXPECT_EQ(!ExpandPatterns(index, node, row.limit).empty(), row.cut);
    EXPECT_EQ(node.terms[0].alternatives, row.words);
  }
}

}  // namespace
}  // namespace vemra::engine
