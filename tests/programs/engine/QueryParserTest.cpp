#include <gtest/gtest.h>

#include <random>

#include "Support/text/LangPack.h"
#include "programs/engine/Query.h"
#include "tests/programs/engine/Queries.h"

namespace vemra::engine {
namespace {

using test::ListOf;

QueryLanguage TestLanguage() {
  QueryLanguage language;
  language.pack = TavoLangPack::GetDefault();
  language.general = ListOf({0, 1, 7});
  language.fields = {{"General", language.general},
                     {"Title", ListOf({1}), ListOf({1})},
                     {"Image text", ListOf({7})}};
  return language;
}

TEST(QueryParser, BuildsTheTree) {
  const std::pair<const char*, const char*> rows[] = {
      {"  Cat  dog\t", "AND(cat dog)"},
      {"cat or dog food", "OR(cat AND(dog food))"},
      {"((cat) (dog food))", "AND(cat dog food)"},
      {"cat NOT dog", "AND(cat NOT(dog))"},
      {"cat AND NOT dog food", "AND(cat food NOT(dog))"},
      {"NOT dog cat", "AND(cat NOT(dog))"},
      {"cat NOT dog NOT (food OR milk)", "AND(cat NOT(dog OR(food milk)))"},
      {"(cat NOT dog) food", "AND(AND(cat NOT(dog)) food)"},
      {"\"cat\"\"dog\"", "AND(cat dog)"},
      {"\"what? * (is) OR; it\"", "\"what is or it\""},
      {"cat\"dog\"mouse", "AND(cat dog mouse)"},
      {"well-known, e.g. C++", "AND(well-known e.g c)"},
      {"Wild* w?ld (*card).", "AND(wild* w?ld *card)"},
      {"-wild*!", "wild*"},
      {"Title: cat dog; mouse", "AND(1:cat 1:dog mouse)"},
      {"title:cat OR dog", "OR(1:cat 1:dog)"},
      {"Image text: \"big cat\"; OR Title: dog;", "OR(7:\"big cat\" 1:dog)"},
      {"(Title : cat) dog", "AND(1:cat dog)"},
      {"Title: cat Image text: dog; mouse;", "AND(1:cat 7:dog 1:mouse)"},
      {"cat; dog;; mouse", "AND(cat dog mouse)"},
      {"Title:= Cat,  milk; dog", "AND(=cat,\xa0milk dog)"},
      {"(title:=cat) dog", "AND(=cat\xa0 dog)"},
      {"Title:=\"a (b); x\"; dog", "AND(=a\xa0(b);\xa0x dog)"},
      {"Title:= cat OR mouse", "=cat\xa0or\xa0mouse"},
      {"cat /S dog /12 \"dog food\" /P w*", "NEAR(cat /s dog /12 \"dog food\" /p w*)"},
      {"a cat /5 dog b", "AND(a NEAR(cat /5 dog) b)"},
      {"a NOT cat /s dog OR b", "OR(AND(a NOT(NEAR(cat /s dog))) b)"},
      {"(cat OR dog OR (\"a b\")) /007 (food)", "NEAR(OR(cat dog \"a b\") /7 food)"},
      {"Title: cat /s dog; food", "AND(NEAR(1:cat /s 1:dog) food)"},
      {"Title: cat; /p food", "NEAR(1:cat /p food)"},
      {"cat /s (Title: dog; OR x)", "NEAR(cat /s OR(1:dog x))"},
      {"\"a b\"/s(cat)", "NEAR(\"a b\" /s cat)"},
      {"and/or /sp /5th /usr/s cat/s", "AND(and/or sp 5th usr/s cat/s)"},
      {"10:30 std::vector http://x.y/", "AND(10:30 std::vector http://x.y)"},
  };
  const QueryLanguage language = TestLanguage();
  for (const auto& [query, tree] : rows) {
    EXPECT_EQ(FormatQuery(ParseQuery(query, language), language.general), tree) << query;
  }
}

constexpr const char* kForms =
    "'/' needs s, p or a number behind it: /s in one sentence, /p in one paragraph, /5 within 5 "
    "words";
constexpr const char* kOperands =
    "an operator between words stands beside words, phrases, and those in parentheses joined by OR";

TEST(QueryParser, PointsAtWhatIsWrong) {
  const struct {
    std::string query;
    std::size_t offset;
    const char* text;
  } rows[] = {
      {"", 0, "there is no word to search for"},
      {" ... & ", 0, "there is no word to search for"},
      {"cat (dog", 4, "this '(' is not closed"},
      {"cat) dog", 3, "this ')' closes nothing"},
      {"cat () dog", 4, "there is no word between these parentheses"},
      {"(cat; dog)", 4, "this ';' ends no field"},
      {"cat \"dog", 4, "this '\"' is not closed"},
      {"OR cat", 0, "there must be a word before OR"},
      {"cat OR", 4, "there must be a word after OR"},
      {"AND cat", 0, "there must be a word before AND"},
      {"cat AND", 4, "there must be a word after AND"},
      {"cat AND OR dog", 4, "there must be a word after AND"},
      {"cat NOT NOT dog", 4, "there must be a word after NOT"},
      {"cat OR NOT dog", 7, "NOT needs another word whose texts it narrows"},
      {"cat / dog", 4, kForms},
      {"cat /0 dog", 4, "words are from 1 to 1000000 apart"},
      {"cat /99999999999 dog", 4, "words are from 1 to 1000000 apart"},
      {"cat OR /s dog", 7, "there must be a word before /s"},
      {"cat /s", 4, "there must be a word after /s"},
      {"(cat /5)", 5, "there must be a word after /5"},
      {"cat /s /p dog", 4, "there must be a word after /s"},
      {"cat /s AND dog", 4, "there must be a word after /s"},
      {"cat /s ... dog", 4, "there must be a word after /s"},
      {"cat /s (dog food)", 7, kOperands},
      {"(a /s b) /p c", 0, kOperands},
      {"Image text:= cat", 0, "the field Image text keeps no expressions"},
      {"cat Title:= ...;", 4, "there is no word for this field"},
      {"Title:= \"cat", 8, "this '\"' is not closed"},
      {"Title:= \"cat\" dog;", 14, "an expression ends with ';'"},
      {"Title:= cat; /s dog", 0, kOperands},
      {"cat **", 4, "* and ? need a letter or a digit beside them"},
      {"cat Nope: dog", 4, "no field is named Nope"},
      {"cat Title: ;", 4, "there is no word for this field"},
      {std::string(11, '(') + "x", 10, "parentheses and fields are nested too deeply"},
      {std::string(kMaxQueryBytes + 1, 'x'), kMaxQueryBytes, "the query is too long"},
  };
  const QueryLanguage language = TestLanguage();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.query.substr(0, 40));
    try {
      const QueryNode node = ParseQuery(row.query, language);
      ADD_FAILURE() << "parsed as " << FormatQuery(node, language.general);
    } catch (const QueryError& error) {
      EXPECT_EQ(error.GetOffset(), row.offset);
      EXPECT_STREQ(error.what(), row.text);
    }
  }
}

TEST(QueryParser, ParsesOrRefusesAnyBytes) {
  const QueryLanguage language = TestLanguage();
  const std::string pieces[] = {"(",     ")",      "\"",   ";",    ":",
                                "*",     "?",      " ",    "AND",  " OR ",
                                " NOT ", "Title:", "cat",  "\xe9", std::string(1, '\0'),
                                "-",     " /s ",   " /3 ", "/"};
  std::mt19937 random(9);
  int parsed = 0;
  for (int round = 0; round < 30000; ++round) {
    std::string query;
    for (unsigned i = random() % 12; i > 0; --i) query += pieces[random() % std::size(pieces)];
    try {
      ParseQuery(query, language);
      ++parsed;
    } catch (const QueryError& error) {
      ASSERT_LE(error.GetOffset(), query.size());
    }
  }
  EXPECT_GT(parsed, 1000);  // or the pieces no longer test the reader
}

}  // namespace
}  // namespace vemra::engine
