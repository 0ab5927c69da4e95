#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>

#include "Support/text/HighlightWrapper.h"
#include "Support/text/Index.h"
#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "programs/commands/Database.h"
#include "programs/commands/Definition.h"
#include "programs/engine/EngineCallbacks.h"
#include "programs/engine/Expansion.h"
#include "programs/engine/HitSearch.h"
#include "programs/engine/IndexWriter.h"
#include "programs/engine/Search.h"
#include "programs/formats/HitStyle.h"
#include "programs/formats/Html.h"
#include "programs/formats/PlainText.h"
#include "tests/programs/commands/RunVemra.h"
#include "tests/programs/engine/PlainSearch.h"

// The words that a shown document marks are exactly those that matched: random documents are
// indexed and shown by the parts of the program, and held against the plain way to match, which
// knows of a document only how its sections were cut.
namespace vemra::commands {
namespace {

enum FileType { kHtml, kText };

constexpr int kDocuments = 250;  // of one index
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kRounds = 4;
#else
constexpr int kRounds = 40;
#endif

// What words are made of, as the documents hold it. Labels in the output hold none of it.
constexpr const char* kLetters = "1234Qq";

// Random documents and queries over few words.
class Maker {
 public:
  explicit Maker(unsigned seed) : random_(seed) {}

  unsigned Below(unsigned limit) { return random_() % limit; }
  bool OneIn(unsigned chances) { return Below(chances) == 0; }
  template <typename... Texts>
  std::string Any(Texts... texts) {
    const char* all[] = {texts...};
    return all[Below(sizeof...(texts))];
  }

  std::string Page() {
    std::string page;
    if (OneIn(2)) page += "<title>" + Items(4) + "</title>";
    if (OneIn(4)) page += "<meta name=author content=\"" + Items(3) + "\">";
    for (unsigned i = Below(4); i > 0; --i) page += Block() + Any("", "\n");
    return page;
  }

  std::string Text() {
    std::string text;
    for (unsigned i = Below(20); i > 0; --i) text += Item() + Any(" ", " ", " ", "\n", "\n\n");
    return text;
  }

  std::string Query(int depth) {
    if (depth == 0 || OneIn(6)) return Operands();
    if (OneIn(5)) return Query(depth - 1) + " OR " + Query(depth - 1);
    if (OneIn(4)) return '(' + Query(depth - 1) + ')' + Any(" ", " AND ") + Operands();
    if (OneIn(3)) return Operands() + " NOT " + Operands();
    if (OneIn(2)) return Operands() + " NOT (" + Query(depth - 1) + ')';
    return Field() + Query(depth - 1) + "; " + Operands();
  }

 private:
  std::string Letter() { return Any("1", "1", "2", "3", "4", "Q", "q"); }

  std::string Word() {
    const std::string word = Letter() + (OneIn(6) ? Letter() : "");
    return OneIn(6) ? word + Any("-", "/", "'") + Letter() : word;
  }

  std::string Item() {
    const std::string item = OneIn(12) ? '(' + Word() + ')' : Word();
    return OneIn(3) ? item + Any(".", ".", "!", ",", "...") : item;
  }

  std::string Items(unsigned most) {
    std::string items = Item();
    for (unsigned i = Below(most); i > 0; --i) items += Any(" ", "\n") + Item();
    return items;
  }

  std::string Inline() {
    if (OneIn(9)) return "<b>" + Items(2) + "</b>";
    if (OneIn(4)) return "<a href=\"x\">" + Items(3) + "</a>";
    if (OneIn(6)) return "<img alt=\"" + Items(2) + "\">";
    return OneIn(5) ? Any("<br>", "<br><br>", "-", "<i></i>") : Item();
  }

  std::string Block() {
    std::string text;
    for (unsigned i = Below(8); i > 0; --i) text += Inline() + Any(" ", " ", "", "\n");
    const std::string tag = Any("p", "div", "h2", "li", "td", "span");
    return '<' + tag + '>' + text + "</" + tag + '>';
  }

  std::string Field() {
    return Any("Title: ", "Author: ", "Link: ", "Heading: ", "image text: ", "General: ");
  }

  std::string Term() {
    if (!OneIn(8)) return Word();
    const std::string letter = Letter();
    return Any("*", "?", "") + letter + Any("*", "?", "-?");
  }

  std::string Phrase() { return OneIn(4) ? '"' + Word() + ' ' + Word() + '"' : Term(); }

  std::string Operand() {
    if (OneIn(5)) return '(' + Phrase() + " OR " + Phrase() + ')';
    if (OneIn(12)) return '(' + Field() + Phrase() + ";)";
    return Phrase();
  }

  // One operand, or a chain of them with operators between.
  std::string Operands() {
    std::string text = Operand();
    for (unsigned i = Below(3); i > 0; --i) {
      text += ' ' + Any("/s", "/p", "/1", "/2", "/4") + ' ' + Operand();
    }
    return text;
  }

  std::mt19937 random_;
};

struct Document {
  FileType type;
  std::string bytes;
  test::PlainText words;
  std::vector<std::vector<std::string>> shown;  // of each word its forms as they are printed
};

// Notes the words of a document as its sections are cut.
template <typename Format>
class WordNotes : public Format {
 public:
  WordNotes(FormatWrapper& wrapper, Document& document)
      : Format(&wrapper, wrapper.GetCodePage()), document_(document) {}

 protected:
  void HandleSection(TavoSection* section) override {
    const std::unique_ptr<TavoSection> owned(section);
    POSITION position = this->GetFieldList().GetStartPosition();
    const int field = this->GetFieldList().GetNextFieldno(position);
    for (TavoWord* word = section->GetFirstWord(); word != nullptr;
         word = section->GetNextWord(word)) {
      document_.words.push_back(
          {field, {}, section->GetWordSentence(word), section->GetWordParagraph(word)});
      document_.shown.emplace_back();
      Note(*word, *section->GetLangPack());
      if (word->GetType() != TavoWord::kCompound) continue;
      for (TavoWord* part = word->GetFirstWord(); part != nullptr; part = word->GetNextWord(part)) {
        if (part->IsRealWord() != 0) Note(*part, *section->GetLangPack());
      }
    }
  }

 private:
  void Note(const TavoWord& word, const TavoLangPack& pack) {
    std::string text = word.GetStriptWord();
    document_.shown.back().push_back(text);
    document_.words.back().forms.push_back(pack.ToIndex(text));
  }

  Document& document_;
};

class PlainStyle : public HitStyle {
 public:
  void AppendOpening(int, std::string& out) const override { out += '\1'; }
  void AppendClosing(int, std::string& out) const override { out += '\2'; }
  void AppendText(std::string_view text, std::string& out) const override { out += text; }
  void AppendEnd(int, std::string&) const override {}
};

// Only what words are made of, and the marks.
std::string Reduced(const std::string& text) {
  const std::string kept = std::string(kLetters) + "\1\2";
  std::string reduced;
  for (const char c : text) {
    if (kept.find(c) != std::string::npos) reduced += c;
  }
  return reduced;
}

// A compound is marked as a whole when it is what a term allows, else by its parts.
std::string ExpectedWord(const Document& document, std::size_t word, const test::PlainHits& hits) {
  const auto& forms = document.words[word].forms;
  const auto& shown = document.shown[word];
  const auto terms = hits.find(word);
  if (terms == hits.end()) return shown[0];
  const auto isMarked = [&](std::size_t form) {
    return std::any_of(terms->second.begin(), terms->second.end(),
                       [&](const auto* term) { return test::Allows(*term, forms[form]); });
  };
  if (forms.size() == 1 || isMarked(0)) return '\1' + shown[0] + '\2';
  std::string text;
  for (std::size_t i = 1; i < forms.size(); ++i) {
    text += isMarked(i) ? '\1' + shown[i] + '\2' : shown[i];
  }
  return text;
}

class MarkedHitsTest : public VemraTest {
 protected:
  void SetUp() override {
    WriteDefinition({folder_.Path("db.cfg"), {folder_.Path()}, {}, "", true});
    database_ = std::make_unique<Database>(Definition());
    database_->LoadIndexList();
    for (const int type : {kHtml, kText}) wrappers_[type] = database_->MakeFormatWrapper(type);
  }

  Document MakeDocument(Maker& make) {
    Document document{make.OneIn(4) ? kText : kHtml, {}, {}, {}};
    FormatWrapper& wrapper = *wrappers_[document.type];
    if (document.type == kHtml) {
      WordNotes<HtmlParser>(wrapper, document).ParseDocument(document.bytes = make.Page());
    } else {
      WordNotes<PlainTextParser>(wrapper, document).ParseDocument(document.bytes = make.Text());
    }
    return document;
  }

  void Index(const std::vector<Document>& documents) {
    engine::IndexWriter writer(database_->GetIndexPath(),
                               database_->GetFields().GetDefinedFields());
    engine::EngineCallbacks callbacks(writer, [](const char*, unsigned long) {});
    for (const Document& document : documents) {
      FormatWrapper& wrapper = *wrappers_[document.type];
      TavoIndex index(wrapper, callbacks.GetTable());
      TavoParseFile* parser = wrapper.GetIndexingParser(&index);
      index.OnDocumentStart("x");
      dynamic_cast<FormatParser&>(*parser).ParseDocument(document.bytes);
      index.OnDocumentEnd(nullptr, database_->GetPack());
      writer.EndText("Z:\\x", document.type, 1);
      wrapper.FreeIndexingParser(parser);
    }
    writer.Finish();
  }

  std::string Show(const Document& document, std::vector<engine::Hit> hits) {
    FormatWrapper& wrapper = *wrappers_[document.type];
    engine::HitSearch search(std::move(hits));
    TavoHighlightWrapper highlight(TavoHighlightWrapper::kWholeDocument, &search, 0,
                                   wrapper.GetLangPack());
    wrapper.SetHitStyle(&style_);
    TavoParseFile* parser = wrapper.GetHighlightParser(&highlight);
    search.SetParser(parser);
    dynamic_cast<FormatParser&>(*parser).ParseDocument(document.bytes);
    parser->GetOutput()->TryPrintAll();
    std::string text = parser->GetOutput()->GetOutputBuffer();
    wrapper.FreeHighlightParser(parser);
    return text;
  }

  engine::QueryNode Parse(const std::string& query, engine::IndexDatabase& index) {
    engine::QueryNode tree = engine::ParseQuery(
        query, engine::MakeQueryLanguage(database_->GetFields(), database_->GetPack()));
    EXPECT_TRUE(engine::ExpandPatterns(index, tree, 1000).empty());
    return tree;
  }

  PlainStyle style_;
  std::unique_ptr<Database> database_;
  std::unique_ptr<FormatWrapper> wrappers_[2];
};

TEST_F(MarkedHitsTest, AreExactlyWhatMatched) {
  Maker make(21);
  int matches = 0;
  int marks = 0;
  for (int round = 0; round < kRounds; ++round) {
    std::vector<Document> documents;
    for (int i = 0; i < kDocuments; ++i) documents.push_back(MakeDocument(make));
    Index(documents);
    engine::IndexDatabase index(database_->GetIndexPath());
    for (std::size_t i = 0; i < documents.size(); ++i) {
      const std::string text = make.Query(2);
      const engine::QueryNode query = Parse(text, index);
      engine::Search search(index, query);
      test::PlainHits hits;
      const bool matched = test::MatchPlainly(query, documents[i].words, hits);
      std::string expected;
      for (std::size_t word = 0; word < documents[i].words.size(); ++word) {
        expected += ExpectedWord(documents[i], word, hits);
      }
      const std::string shown =
          Show(documents[i], search.FindHits(static_cast<std::int64_t>(i) + 1));
      SCOPED_TRACE("query:\n" + text);
      ASSERT_EQ(Reduced(shown), Reduced(expected)) << documents[i].bytes << "\nshown:\n" << shown;
      matches += matched ? 1 : 0;
      marks += static_cast<int>(hits.size());
      if (i % 10 != 0) continue;
      std::set<std::int64_t> found;
      for (const auto& one : search.Find(kDocuments, {}).best) found.insert(one.number);
      for (std::size_t j = 0; j < documents.size(); ++j) {
        test::PlainHits ignored;
        ASSERT_EQ(found.count(static_cast<std::int64_t>(j) + 1) == 1,
                  test::MatchPlainly(query, documents[j].words, ignored))
            << documents[j].bytes;
      }
    }
  }
  // Or the documents and queries no longer test anything.
  EXPECT_GT(matches, kRounds * kDocuments / 10);
  EXPECT_GT(marks, kRounds * kDocuments / 4);
}

}  // namespace
}  // namespace vemra::commands
