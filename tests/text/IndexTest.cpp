#include "Support/text/Index.h"

#include <gtest/gtest.h>

#include "Support/definition/FieldRule.h"
#include "Support/definition/FileINI.h"
#include "Support/foundation/Strings.h"
#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "tests/text/RecordingEngine.h"

namespace vemra {
namespace {

constexpr int kTitle = 1;
constexpr int kNumber = 2;
constexpr int kEntry = 3;
constexpr int kExpression = 4;

class IndexTest : public testing::Test {
 protected:
  IndexTest() : index(definitions, engine) {
    Define(0, "General", 0);
    Define(kTitle, "Title", fieldrule::kAltSort);
    Define(kNumber, "Number", fieldrule::kAltSort | fieldrule::kNumField);
    Define(kEntry, "Entry", fieldrule::kEntry);
    Define(kExpression, "Expression", fieldrule::kExpressions | fieldrule::kProximity);
  }

  void Define(int number, const char* name, std::uint32_t rules) {
    CTavoField field;
    field.SetFieldno(number);
    field.SetName(name);
    field.AddFieldRule(rules);
    definitions.AddField(field);
  }

  std::string Calls(const std::string& text, std::initializer_list<int> fields) {
    CTavoFieldList list;
    for (const int field : fields) list.Set(field);
    TavoSection section(nullptr, text);
    section.ParseContents();
    index.IndexSection(&section, list);
    return engine.Take();
  }

  CTavoFileINI definitions;
  test::RecordingEngine engine;
  TavoIndex index;
};

TEST_F(IndexTest, SendsWordsInOrder) {
  const struct {
    const char* text;
    std::initializer_list<int> fields;
    const char* calls;
  } kRows[] = {
      {"", {0}, ""},
      {" ... ", {0}, ""},
      {"Hello", {}, ""},
      {"Hello, world. Next", {0}, "P hello:0 world:0 S next:0"},
      {"one\ntwo. three", {0}, "P one:0 P two:0 S three:0"},
      {"'Well-Known' a", {0}, "P well-known:0 +well:0 +known:0 a:0"},
      {"e.g. this", {0}, "P e.g:0 +e:0 +g:0 S this:0"},
      {"New York", {kExpression}, "P new:4 york:4 +new\xA0york:4,100"},
      {"Paris!", {0, kExpression}, "P paris:0 +paris!\xA0:4,100"},
      {"---", {kExpression}, "+---\xA0:4,100"},
      {"word", {77}, "P word:77"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(Calls(row.text, row.fields), row.calls);
  }
}

TEST_F(IndexTest, BuildsSortKeys) {
  const std::string nines(20, '9');
  const std::string message = "!3(SORT: number %s is out of range (textno 1, field Number)\n)";
  const auto tooLarge = [&message](const std::string& shown) {
    return std::string(message).replace(message.find("%s"), 2, shown);
  };
  const struct {
    int field;
    std::vector<std::string> texts;
    std::string messages;
    std::string key;
  } kRows[] = {
      {kNumber,
       {"42", "43"},
       "",
       "\x13\x13"
       "0000000042\x13"},
      {kNumber,
       {" +7 apples"},
       "",
       "\x13\x13"
       "0000000007\x13"},
      {kNumber,
       {"none"},
       "",
       "\x13\x13"
       "0000000000\x13"},
      {kNumber,
       {"4294967295"},
       "",
       "\x13\x13"
       "4294967295\x13"},
      {kNumber,
       {"4294967296", "5"},
       tooLarge("4294967296"),
       "\x13\x13"
       "0000000005\x13"},
      {kNumber, {nines}, tooLarge("999999999999..."), "\x13\x13\x13"},
      {kNumber, {"999999999999"}, tooLarge("999999999999"), "\x13\x13\x13"},
      {kNumber, {" -1"}, tooLarge(" -1"), "\x13\x13\x13"},
      {kTitle,
       {"abc", "", "defghijklm", "no room"},
       "",
       "\x13"
       "abcdefghij\x13"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.texts[0]);
    test::RecordingEngine fresh;
    TavoIndex sink(definitions, fresh);
    sink.SetMaxSortKeySize(10);
    sink.OnDocumentStart("");
    fresh.Take();
    for (const auto& text : row.texts) {
      sink.AddToSort(row.field, definitions.GetField(row.field), text);
    }
    EXPECT_EQ(fresh.Take(), row.messages);
    sink.OnDocumentEnd(nullptr, nullptr);
    EXPECT_EQ(fresh.Take(), "key1(" + row.key + ") head1()");
  }
}

TEST_F(IndexTest, ReportsEntriesThatCannotBeRead) {
  EXPECT_EQ(Calls("no marker", {kEntry}),
            "!3(Entry error - '@' not found: field=3 - string=<no marker>\n) P no:3 marker:3");
  index.AddEntryString(kEntry, "\r\nbad @Nope: x\n");
  EXPECT_EQ(engine.Take(), "!3(Nope: x\n   fieldname Nope is invalid\n  see bad @Nope: x\n)");
  EXPECT_EQ(index.GetEntriesCount(), 0);
  int field = 0;
  index.AddEntryString(kEntry, " a#b @");
  EXPECT_EQ(index.GetEntryString(0, &field), "a#b @");
  EXPECT_EQ(field, kEntry);
  EXPECT_EQ(index.GetEntryString(1, &field), "");
  // Entries are not cut where sort keys are.
  index.SetMaxSortKeySize(4);
  Calls("words enough @", {kEntry});
  EXPECT_EQ(index.GetEntryString(1, &field), "words enough @");
}

TEST_F(IndexTest, TakesADocumentFromStartToEnd) {
  definitions.AddTitleItem([] {
    auto item = std::make_unique<TavoTitleItem>();
    item->SetFieldno(kTitle);
    return item;
  }());
  TavoOutput output;
  index.SetStoreText(true);
  for (const char document : {'1', '2'}) {
    SCOPED_TRACE(document);
    const auto numbered = [document](std::string calls) {
      return ReplaceChar(calls, '$', document);
    };
    index.OnDocumentStart("c:\\doc.txt");
    EXPECT_EQ(engine.Take(), numbered("new(0) store$ list$"));
    TavoSection title(nullptr, "A Title");
    definitions.AddToTitle(kTitle, &title);
    EXPECT_EQ(Calls("Zoo", {kTitle}), "P zoo:1");
    EXPECT_EQ(Calls("Big|Apple @Title: x", {kEntry}),
              "P big|apple:3 +big:3 +apple:3 title:3 +title:3 x:3");
    output.Write(numbered("stored $"));
    index.OnDocumentEnd(&output, nullptr);
    EXPECT_EQ(
        engine.Take(),
        numbered("key$(\x13Zoo\x13) entry(Big|Apple @1:x;) list10$ big:3,800000@10$ "
                 "apple:3,800000@10$ entry#here#:3,800000@10$ head$(A Title) text(stored $)"));
    EXPECT_EQ(index.GetParagraphCount(), 2);
    EXPECT_EQ(index.GetSentenceCount(), 2) << "a paragraph starts a sentence";
    output.ResetOutput();
  }
  EXPECT_EQ(index.GetTextCounter(), 2);
}

TEST_F(IndexTest, ForgetsADocumentThatWasGivenUp) {
  index.OnDocumentStart("");
  Calls("Zoo", {kTitle});
  index.AddEntryString(kEntry, "left @");
  index.OnDocumentStart("");
  engine.Take();
  index.OnDocumentEnd(nullptr, nullptr);
  EXPECT_EQ(engine.Take(), "head2()");
}

TEST(IndexingWrapperTest, SkipsWhatTheEngineDoesNotSupply) {
  TavoIndexingWrapper none;
  none.textno = 9;
  CTavoFileINI definitions;
  TavoIndex index(definitions, none);
  index.OnDocumentStart("");
  index.AddEntryString(0, "a @");
  index.OnDocumentEnd(nullptr, nullptr);
  EXPECT_EQ(none.textno, 9U);
}

}  // namespace
}  // namespace vemra
