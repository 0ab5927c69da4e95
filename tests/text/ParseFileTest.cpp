#include "Support/text/ParseFile.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "Support/definition/FieldRule.h"
#include "Support/text/HighlightWrapper.h"
#include "Support/text/Index.h"
#include "Support/text/Input.h"
#include "Support/text/Notification.h"
#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "Support/text/THWrapper.h"
#include "tests/TempFolder.h"
#include "tests/text/HitSearch.h"
#include "tests/text/RecordingEngine.h"

namespace vemra {
namespace {

// A section that counts how many live.
class CountedSection : public TavoSection {
 public:
  CountedSection(TavoOutput* output, const std::string& text) : TavoSection(output, text) {
    ++alive;
  }
  ~CountedSection() override { --alive; }
  static inline int alive = 0;
};

// Runs of text between slashes. The run "P" asks for a paragraph, "throw" throws, "stop" stops,
// "free" gives the parser back, a digit is the field of what follows.
class RunParser : public TavoParseFile {
 public:
  using TavoParseFile::TavoParseFile;

  TavoIndex* index = nullptr;  // indexes when set, else highlights
  int breakOnNewLine = 0;
  bool countSentences = true;  // in the numbers, the sentence in its paragraph
  std::string places;          // word, sentence, paragraph of each section
  std::string numbers;         // all numbers of each word

 protected:
  int ParseInput(TavoInput* input) override {
    OnStart();
    SetBreakOnNewLine(breakOnNewLine);
    while (!input->AtEOF() && !DoStopParsing()) {
      std::string run = input->GetUpTo('/', 1);
      if (run == "throw") throw std::runtime_error(run);
      if (run == "stop") StopParsing(run);
      if (run == "free") GetWrapper()->FreeHighlightParser(this);
      if (run == "P") {
        SetNewParagraph();
      } else if (run.size() == 1 && run[0] >= '0' && run[0] <= '9') {
        CTavoFieldList fields;
        fields.Set(run[0] - '0');
        SetFieldList(fields);
      } else {
        OnContents(run);
      }
    }
    return OnEnd();
  }

  std::unique_ptr<TavoSection> CreateSection(const std::string& text) override {
    return std::make_unique<CountedSection>(GetOutput(), text);
  }

  void HandleSection(TavoSection* section) override {
    for (const TavoWord* word = section->GetFirstWord(); word; word = section->GetNextWord(word)) {
      for (const int number : {section->GetWordPosition() + word->GetNumber(),
                               section->GetWordSentence(word), section->GetWordParagraph(word),
                               section->GetWordInSentence(word), section->GetWordInParagraph(word),
                               countSentences ? section->GetSentenceInParagraph(word) : 0}) {
        numbers += std::to_string(number) + ",";
      }
      numbers += " ";
    }
    places += std::to_string(section->GetWordPosition()) + "," +
              std::to_string(section->GetSentencePosition()) + "," +
              std::to_string(section->GetParagraphPosition()) + " ";
    if (index == nullptr) {
      HighlightSection(section, 1);
      return;
    }
    CTavoFieldList fields;
    fields.Set(0);
    const std::unique_ptr<TavoSection> owned(section);
    index->IndexSection(section, fields);
  }
};

class LastMessage : public TavoNotification {
 public:
  std::string message;
  void Notify(const char* text, int value) override { message = text + std::to_string(value); }
};

class ParseFileTest : public testing::Test {
 protected:
  ParseFileTest() : wrapper("Z:\\no\\such.cfg", 0), parser(&wrapper) {
    CTavoField field;
    for (int number = 0; number <= 2; ++number) {
      field.SetFieldno(number);
      field.SetName("Field" + std::to_string(number));
      if (number == 1) field.AddFieldRule(fieldrule::kNoText);
      CTavoFieldList alsoInto;
      if (number == 2) alsoInto.Set(0);
      field.SetFieldList(alsoInto);
      wrapper.GetFileINI().AddField(field);
      field.RemoveFieldRule(fieldrule::kNoText);
    }
  }

  TavoTHWrapper wrapper;
  RunParser parser;
};

TEST_F(ParseFileTest, PlacesSections) {
  const struct {
    const char* text;
    const char* places;
  } kRows[] = {
      {"One two./Three", "1,0,0 3,1,0 "},
      {"One two/Three", "1,0,0 3,0,0 "},
      {"One two./P/Three", "1,0,0 3,1,1 "},
      {"One two/P/Three", "1,0,0 3,1,1 "},
      {"One/.../Two", "1,0,0 2,0,0 2,0,0 "},
      {"One/P/ - /Two/Three", "1,0,0 2,1,1 2,1,1 3,1,1 "},
      {"P/One", "1,1,1 "},
      {"One.\n/P/Two", "1,0,0 2,2,1 "},
      {"One/P/P/Two", "1,0,0 2,1,1 "},
  };
  parser.breakOnNewLine = 1;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    parser.places.clear();
    EXPECT_EQ(parser.Parse(row.text), 1);
    EXPECT_EQ(parser.places, row.places);
  }
}

TEST_F(ParseFileTest, ANewParagraphStartsAllItsCounts) {
  parser.Parse("One two. Three./Four/P/Five. Six");
  EXPECT_EQ(parser.numbers,
            "1,0,0,0,0,0, 2,0,0,1,1,0, 3,1,0,0,2,1, 4,2,0,0,3,2, 5,3,1,0,0,0, 6,4,1,0,1,1, ");
}

// The text cut at one end of some of its white-space runs, where both sides have a word.
std::string CutAtWhiteSpace(const std::string& text, std::mt19937& random) {
  std::string cut;
  bool hasWord = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool atEnd =
        i > 0 && (text[i] == ' ' || text[i] == '\n') != (text[i - 1] == ' ' || text[i - 1] == '\n');
    if (atEnd && hasWord && random() % 2 == 0 &&
        text.find_first_of("abc", i) != std::string::npos) {
      cut += '/';
      hasWord = false;
    }
    cut += text[i];
    hasWord = hasWord || (text[i] >= 'a' && text[i] <= 'c');
  }
  return cut;
}

// Whether a mark that ends a sentence stands between a line end and the next word.
bool StartsParagraphWithMark(const std::string& text) {
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; ++at) {
    if (text.find_first_of(".!", at) < text.find_first_of("abc", at)) return true;
  }
  return false;
}

TEST_F(ParseFileTest, NumbersDoNotDependOnTheCuts) {
  std::mt19937 random(4);
  test::RecordingEngine engine;
  TavoIndex index(wrapper.GetFileINI(), engine);
  parser.index = &index;
  const char* const kPieces[] = {"a", "b", "cab", " ", " ", "\n", ". ", "-", "! ", "a b. ", "  \n"};
  for (int round = 0; round < 2000; ++round) {
    std::string text = "a";
    for (std::size_t i = random() % 25; i > 0; --i) text += kPieces[random() % std::size(kPieces)];
    parser.breakOnNewLine = static_cast<int>(random() % 2);
    parser.countSentences = !parser.breakOnNewLine || !StartsParagraphWithMark(text);
    SCOPED_TRACE(text);
    parser.Parse(text.c_str());
    const std::string whole = engine.Take();
    const std::string words = std::exchange(parser.numbers, "");
    const int numbers[] = {parser.GetLastWordNumber(), parser.GetSentenceNumber(),
                           parser.GetParagraphNumber()};
    std::string cut = CutAtWhiteSpace(text, random);
    // The last run may be left without a word: it then counts for nothing, by the rules.
    const std::size_t last = cut.rfind('/');
    if (last != std::string::npos && cut.find_first_of("abc", last) == std::string::npos) continue;
    parser.numbers.clear();
    SCOPED_TRACE(cut);
    parser.Parse(cut.c_str());
    ASSERT_EQ(engine.Take(), whole);
    ASSERT_EQ(std::exchange(parser.numbers, ""), words);
    ASSERT_EQ(parser.GetLastWordNumber(), numbers[0]);
    ASSERT_EQ(parser.GetSentenceNumber(), numbers[1]);
    ASSERT_EQ(parser.GetParagraphNumber(), numbers[2]);
  }
}

TEST_F(ParseFileTest, WritesWhatIsPrintable) {
  const struct {
    const char* text;
    const char* output;
  } kRows[] = {
      {"0/shown /1/hidden /2/again", "shown again"},
      {"1/hidden", ""},
      {"/", ""},
      {"no field", "no field"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    parser.Parse(row.text);
    EXPECT_EQ(parser.GetOutput()->GetOutputBuffer(), row.output);
  }
  CTavoFieldList both;
  both.Set(0);
  both.Set(1);
  parser.SetFieldList(both);
  EXPECT_EQ(parser.IsWrite(), 0) << "one field without text is enough";
}

TEST_F(ParseFileTest, StopsAndStartsAgain) {
  LastMessage notification;
  parser.SetNotification(&notification);
  parser.StopParsing("limit");
  EXPECT_EQ(notification.message, "Stopping parsing because: limit1");
  EXPECT_EQ(parser.DoStopParsing(), 1);
  parser.Parse("a");
  EXPECT_EQ(parser.DoStopParsing(), 0);
  EXPECT_EQ(parser.GetStopReason(), "");
  // Left where it was by a document that was given up.
  parser.GetOutput()->SetCurrentField(3);
  parser.Parse("next");
  EXPECT_EQ(parser.GetOutput()->GetOutputBuffer(), "next");
}

TEST_F(ParseFileTest, ReadsWholeFiles) {
  test::TempFolder folder;
  const std::string longText(100000, 'x');
  test::WriteHostFile(folder.Host() / "doc", longText + "\r\n\x1A\xFF");
  EXPECT_EQ(parser.ParseFile(folder.Path("doc")), 1);
  EXPECT_EQ(parser.GetOutput()->GetOutputBuffer(), longText + "\r\n\x1A\xFF");
  parser.Parse("one two");
  EXPECT_EQ(parser.ParseFile(folder.Path("missing")), 0);
  EXPECT_EQ(parser.ParseFile(folder.Path()), 0);
  EXPECT_EQ(parser.GetLastWordNumber(), 2);
}

TEST_F(ParseFileTest, SummarisesUntilThereIsEnough) {
  test::HitSearch search;
  LastMessage notification;
  parser.SetNotification(&notification);
  const struct {
    TavoHighlightWrapper::Mode mode;
    bool late;
    const char* summary;
    bool stopped;
  } kRows[] = {
      {TavoHighlightWrapper::kFirstWords, false, "a hit b c", true},
      {TavoHighlightWrapper::kAroundFirstHit, false, "a hit", true},
      {TavoHighlightWrapper::kAroundFirstHit, true, "a hit", false},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.mode * 2 + row.late);
    notification.message.clear();
    search.late = row.late;
    TavoHighlightWrapper highlight(row.mode, &search, 4);
    parser.SetHighlightWrapper(&highlight);
    EXPECT_EQ(parser.IsWrite(), 0);
    parser.Parse("2/a/hit/b c/d/e");
    highlight.TruncateSection();
    EXPECT_EQ(highlight.GetSummary()->GetContents(), row.summary);
    EXPECT_EQ(notification.message,
              row.stopped ? "Stopping parsing because: Put in enough words\n1" : "");
    EXPECT_EQ(highlight.GetPageno(), 1);
  }
  EXPECT_TRUE(search.asked.IsSet(0)) << "the field list is expanded";
  parser.SetHighlightWrapper(nullptr);
  EXPECT_EQ(parser.IsWrite(), 1);
}

// However a parse ends, no section stays, no search is left waiting, and the next document is
// shown whole.
TEST_F(ParseFileTest, LeavesNothingBehind) {
  for (const char* end : {"throw", "stop", "e"}) {
    for (const bool late : {false, true}) {
      for (const auto mode :
           {TavoHighlightWrapper::kWholeDocument, TavoHighlightWrapper::kFirstWords,
            TavoHighlightWrapper::kAroundFirstHit}) {
        SCOPED_TRACE(std::string(end) + (late ? " late " : " ") + std::to_string(mode));
        test::HitSearch search;
        search.late = late;
        TavoHighlightWrapper highlight(mode, &search, 40);
        parser.SetHighlightWrapper(&highlight);
        const std::string document = "0/P/a/b c/1/d/" + std::string(end) + "/hit";
        if (end == std::string("throw")) {
          EXPECT_THROW(parser.Parse(document.c_str()), std::runtime_error);
        } else {
          parser.Parse(document.c_str());
        }
        EXPECT_EQ(parser.IsParsing(), 0);
        EXPECT_EQ(parser.GetOutput()->TryPrintAll(), 1);
        EXPECT_EQ(CountedSection::alive, 0);
        EXPECT_EQ(highlight.IsEnough(), 0);
        parser.SetHighlightWrapper(nullptr);
        parser.places.clear();
        parser.Parse("e");
        EXPECT_EQ(parser.places, "1,0,0 ");
        EXPECT_EQ(parser.GetOutput()->GetOutputBuffer(), "e");
      }
    }
  }
}

class RunWrapper : public TavoTHWrapper {
 public:
  using TavoTHWrapper::TavoTHWrapper;
  TavoParseFile* GetFieldsParser() override {
    return AddParserToFieldsList(std::make_unique<RunParser>(this));
  }
  TavoParseFile* GetIndexingParser(TavoIndex* /*index*/) override {
    return AddParserToIndexingList(std::make_unique<RunParser>(this));
  }
  TavoParseFile* GetHighlightParser(TavoHighlightWrapper* highlight) override {
    auto parser = std::make_unique<RunParser>(this);
    parser->SetHighlightWrapper(highlight);
    return AddParserToHighlightList(std::move(parser));
  }
};

TEST(THWrapperTest, AParserMayGiveItselfBack) {
  for (const char* document : {"a/hit/free/b", "a/hit/free/b/throw"}) {
    SCOPED_TRACE(document);
    test::HitSearch search;
    search.late = true;
    TavoHighlightWrapper highlight(TavoHighlightWrapper::kWholeDocument, &search);
    RunWrapper wrapper("Z:\\no\\such.cfg", 0);
    TavoParseFile* const parser = wrapper.GetHighlightParser(&highlight);
    EXPECT_EQ(parser->Parse(document), 1);
    EXPECT_EQ(parser->GetOutput()->GetOutputBuffer(), "ahitfree") << "stopped, and there still";
    EXPECT_EQ(wrapper.NoMoreOwners(), 1);
    wrapper.FreeHighlightParser(parser);
    EXPECT_EQ(CountedSection::alive, 0);
  }
}

// Gives back the parser of what is embedded in its documents when it goes itself, and tells whether
// the wrapper could be destroyed while it parses.
class OuterParser : public RunParser {
 public:
  OuterParser(TavoTHWrapper* wrapper, TavoParseFile* inner) : RunParser(wrapper), inner_(inner) {}
  ~OuterParser() override { GetWrapper()->FreeFieldsParser(inner_); }

 protected:
  void HandleSection(TavoSection* section) override {
    GetWrapper()->FreeFieldsParser(this);
    EXPECT_EQ(GetWrapper()->NoMoreOwners(), 0);
    RunParser::HandleSection(section);
  }

 private:
  TavoParseFile* inner_;
};

class OuterWrapper : public RunWrapper {
 public:
  using RunWrapper::RunWrapper;
  TavoParseFile* GetOuterParser() {
    TavoParseFile* const inner = GetFieldsParser();
    return AddParserToFieldsList(std::make_unique<OuterParser>(this, inner));
  }
};

TEST(THWrapperTest, AParserMayGiveBackAnother) {
  OuterWrapper wrapper("Z:\\no\\such.cfg", 0);
  wrapper.FreeFieldsParser(wrapper.GetOuterParser());
  EXPECT_EQ(wrapper.NoMoreOwners(), 1);
  wrapper.GetOuterParser()->Parse("a/b");
  EXPECT_EQ(wrapper.NoMoreOwners(), 0) << "the inner one is out";
  wrapper.FreeFieldsParser(nullptr);
  EXPECT_EQ(wrapper.NoMoreOwners(), 1);
}

TEST(THWrapperTest, KeepsItsParsersUntilTheyAreGivenBack) {
  RunWrapper wrapper("Z:\\no\\such.cfg", 0);
  EXPECT_EQ(wrapper.IsLoaded(), 0);
  EXPECT_EQ(wrapper.GetViewParser(), nullptr);
  TavoParseFile* parser = wrapper.GetFieldsParser();
  wrapper.GetIndexingParser(nullptr);  // never given back: the wrapper deletes it
  wrapper.FreeIndexingParser(parser);
  EXPECT_EQ(parser->Parse("still there"), 1);
  wrapper.FreeFieldsParser(parser);
  EXPECT_EQ(wrapper.NoMoreOwners(), 0);
}

TEST(THWrapperTest, LoadsTheDefinitionsOfItsFileType) {
  test::TempFolder folder;
  test::WriteHostFile(folder.Host() / "db.cfg",
                      "[General Definitions]\r\nIndexName=db\r\nNumber of File Types=2\r\n"
                      "[FileType1]\r\nName=text\r\nFTD=text.ftd\r\n"
                      "[FileType2]\r\nName=html\r\nFTD=\"html.ftd\"\r\n");
  test::WriteHostFile(folder.Host() / "db.ini", "[FIELD3]\r\nNAME=Heading\r\n");
  test::WriteHostFile(folder.Host() / "html.ftd",
                      "[Field3]\r\nTag Number=1\r\nTag Path 1=*<h1\r\n");
  TavoTHWrapper wrapper(folder.Path("db.cfg"), 1);
  EXPECT_EQ(wrapper.IsLoaded(), 1);
  CTavoFieldList fields;
  wrapper.GetFileINI().CheckFields(fields, "<html<h1");
  EXPECT_TRUE(fields.IsSet(3));
}

}  // namespace
}  // namespace vemra
