#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "Support/definition/FileDict.h"
#include "programs/engine/EngineError.h"
#include "programs/engine/IndexWriter.h"
#include "programs/engine/Search.h"
#include "tests/programs/commands/RunVemra.h"
#include "tests/programs/engine/Queries.h"

namespace vemra::commands {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

// "w1 w2 w3 "
std::string Words(int count) {
  std::string words;
  for (int i = 1; i <= count; ++i) words += "w" + std::to_string(i) + ' ';
  return words;
}

class ProgramTest : public VemraTest {
 protected:
  void AddDocument(const std::string& name, const std::string& text) const {
    Write("docs/" + name, text);
  }

  // The names of the documents that a query finds, best first.
  std::vector<std::string> Find(const std::string& query, const Arguments& more = {}) const {
    const Outcome run = Vemra({"search", query, "--json"}, more);
    std::vector<std::string> names;
    const Json answer = Json::parse(run.out);
    for (const Json& hit : answer["hits"]) {
      names.push_back(std::filesystem::path(hit["path"].get<std::string>()).filename());
    }
    EXPECT_EQ(run.exitCode, names.empty() ? kNothingFound : kDone) << run.err;
    return names;
  }
};

TEST_F(ProgramTest, FindsByFieldsPhrasesAndPatterns) {
  AddDocument("page.html",
              "<title>Cats &amp; mice</title><meta name=author content=\"the editors\"><h1>Caf"
              "\xc3\xa9</h1><p>A well-known cat. <img alt=\"sleeping tom\"> <a href=x>more</a>");
  AddDocument("dog.txt", "The dog knows no cat.\n\nKnown well, the dog sleeps.");
  AddDocument("sub/latin.txt", "Ein Caf\xe9 und eine Katze");
  CreateAndIndex();
  EXPECT_THAT(Find("cat"), UnorderedElementsAre("page.html", "dog.txt"));
  EXPECT_THAT(Find("well-known"), ElementsAre("page.html"));
  EXPECT_THAT(Find("\"the dog\" sleep*"), ElementsAre("dog.txt"));
  EXPECT_THAT(Find("CAF\xc3\x89 Katze OR Title: mice;"),
              UnorderedElementsAre("latin.txt", "page.html"));
  EXPECT_THAT(Find("Title: cat*;"), ElementsAre("page.html"));
  EXPECT_THAT(Find("Author: editors; Image text: tom; Heading: caf\xc3\xa9; Link: more;"),
              ElementsAre("page.html"));
  EXPECT_THAT(Find("editors"), ElementsAre("page.html"));  // the general field holds every field
}

TEST_F(ProgramTest, FindsExpressions) {
  const std::string title = Words(20);
  AddDocument("cat.html",
              "<title>Cat  food</title><meta name=author content=\"A. B-C\"><p>dog</p>");
  AddDocument("more.html", "<title>More cat food</title><p>Cat food</p>");
  AddDocument("long.html", "<title>" + title + "</title>");
  CreateAndIndex();
  EXPECT_THAT(Find("Title:= cat FOOD;"), ElementsAre("cat.html"));
  EXPECT_THAT(Find("General:= cat food; dog"), ElementsAre("cat.html"));
  EXPECT_THAT(Find("Author:=\"a. b-c\""), ElementsAre("cat.html"));
  EXPECT_THAT(Find("Author:= cat food"), ElementsAre());
  EXPECT_THAT(Find("cat NOT Title:= cat food;"), ElementsAre("more.html"));
  EXPECT_THAT(Find("Title:= " + title), ElementsAre("long.html"));
  // They are no words: patterns and the dictionary pass over them.
  EXPECT_THAT(Find("*cat*food*"), ElementsAre());
  EXPECT_EQ(Json::parse(Vemra({"dictionary", "", "--json"}).out)["words"][0]["word"], "a");
  const auto show = [this](const std::string& query) {
    const Json hits = Json::parse(Vemra({"search", query, "--json"}).out)["hits"];
    const std::string number = std::to_string(hits[0]["number"].get<int>());
    return Vemra({"show", number, "--query", query}).out;
  };
  EXPECT_EQ(show("Title:= cat food;"), "Title: [1]Cat [2]food\nAuthor: A. B-C\n\ndog\n");
  const std::string shown = show("Title:= " + title);
  EXPECT_THAT(shown, HasSubstr("Title: [1]w1 "));
  EXPECT_THAT(shown, HasSubstr(" [16]w16 w17 w18 "));
}

TEST_F(ProgramTest, SortsByAField) {
  const char* const pages[][3] = {{"a.html", "beta", "30"},
                                  {"b.html", "\xc3\xa4rger", "4294967295"},
                                  {"c.html", "", ""},
                                  {"d.html", "beta2", "7"},
                                  {"e.html", "alpha", "x"}};
  for (const auto& [name, title, size] : pages) {
    AddDocument(name, "<title>" + std::string(title) + "</title><meta name=\"size\" content=\"" +
                          size + "\"><p>cat</p>");
  }
  AddDocument("f.txt", "cat");
  Create();
  Replace("db.ini", "", "[FIELD9]\nNAME=Size\nFIELDRULES=AltSort,NUMFIELD\n");
  Replace("db_html.ftd", "",
          "[Field9]\nTag Number=0\nAttribute Number=1\nAttribute Path 1=*<meta>\n"
          "Attribute Name 1=size\nAdd to Attribute Field 1=0\n");
  ASSERT_EQ(Vemra({"index"}).exitCode, kDone);
  EXPECT_THAT(Find("cat", {"--sort", "title"}),
              ElementsAre("e.html", "b.html", "a.html", "d.html", "c.html", "f.txt"));
  EXPECT_THAT(Find("cat", {"--sort", "-Title", "--count", "3"}),
              ElementsAre("d.html", "a.html", "b.html"));
  EXPECT_THAT(Find("cat", {"--sort", "SIZE"}),
              ElementsAre("e.html", "d.html", "a.html", "b.html", "c.html", "f.txt"));
  EXPECT_THAT(Find("cat", {"--sort", "-SIZE"}),
              ElementsAre("b.html", "a.html", "d.html", "e.html", "c.html", "f.txt"));
  const Outcome refused = Vemra({"search", "cat", "--sort", "Author"});
  EXPECT_EQ(refused.exitCode, kUsage);
  EXPECT_THAT(refused.err,
              HasSubstr("texts cannot be sorted by Author; they can by Title, Size\n"));
}

TEST_F(ProgramTest, PrintsItsDictionary) {
  AddDocument("a.html", "<title>Caf\xc3\xa9</title><p>A cat-like cat. <a href=\"x\">cat</a></p>");
  AddDocument("b.txt", "Cats cat cat\n\ndog");
  CreateAndIndex();
  const auto words = [this](const Arguments& more) {
    return Json::parse(Vemra({"dictionary", "--json"}, more).out)["words"].dump();
  };
  EXPECT_EQ(words({"CA"}),
            "[{\"occurrences\":1,\"texts\":1,\"word\":\"caf\xc3\xa9\"},"
            R"({"occurrences":5,"texts":2,"word":"cat"},)"
            R"({"occurrences":1,"texts":1,"word":"cat-like"},)"
            R"({"occurrences":1,"texts":1,"word":"cats"}])");
  EXPECT_EQ(words({"ca", "--field", "Link"}), R"([{"occurrences":1,"texts":1,"word":"cat"}])");
  EXPECT_EQ(words({"cat", "--field", "general", "--count", "1"}),
            R"([{"occurrences":5,"texts":2,"word":"cat"}])");
  Outcome run = Vemra({"dictionary", "", "--count", "2"});
  EXPECT_EQ(
      run.out,
      "       texts      places  word\n           1           1  a\n"
      "           1           1  caf\xc3\xa9\nMore words follow; --count N prints N of them.\n");
  run = Vemra({"dictionary", "cu"});
  EXPECT_EQ(run.exitCode, kNothingFound);
  EXPECT_EQ(run.err, "No word begins with cu\n");
  run = Vemra({"dictionary", "c", "--field", "Nope"});
  EXPECT_EQ(run.exitCode, kUsage);
  EXPECT_THAT(run.err, HasSubstr("no field is named Nope"));
}

TEST_F(ProgramTest, PrintsResults) {
  AddDocument("cats.html", "<title>Cats</title><p>one <b>two</b> Caf\xe9 three</p>");
  AddDocument("plain.txt", "three dogs");
  CreateAndIndex();
  Outcome run = Vemra({"search", "caf\xc3\xa9"});
  EXPECT_EQ(run.out, "1 text\n\n1. Cats  (text 1)\n   " + File("docs/cats.html") +
                         "\n   Cats one two [1]Caf\xc3\xa9 three\n");
  run = Vemra({"search", "three", "--count", "1", "--json"});
  const Json answer = Json::parse(run.out);
  EXPECT_EQ(answer["total"], 2);
  ASSERT_EQ(answer["hits"].size(), 1U);
  EXPECT_EQ(answer["hits"][0]["title"], "plain.txt");
  EXPECT_EQ(answer["hits"][0]["summary"].dump(),
            R"([{"hit":true,"text":"three"},{"hit":false,"text":" dogs"}])");
  run = Vemra({"show", "2", "--query", "dogs OR three"});
  EXPECT_EQ(run.out, "[1]three [2]dogs\n");
  run = Vemra({"show", "2", "--query", "dogs", "--html"});
  EXPECT_THAT(run.out, HasSubstr("three <mark id=\"hit1\">dogs<"));
}

TEST_F(ProgramTest, PrintsSummariesAndPages) {
  AddDocument("a<b>.html",
              "<title>R&amp;D &lt;script></title><p>" + Words(60) + "a &lt;i> cat\"</p>");
  CreateAndIndex();
  const auto search = [this](const Arguments& more) {
    return Vemra({"search", "w55 OR cat"}, more);
  };
  EXPECT_THAT(search({"--summary", "hits"}).out, HasSubstr("   w40 "));
  EXPECT_THAT(search({"--summary", "hits"}).out, HasSubstr(" [1]w55 "));
  const std::string start = search({"--summary", "start"}).out;
  EXPECT_THAT(start, HasSubstr("   R&D <script> w1 w2 "));
  EXPECT_THAT(start, HasSubstr(" w28\n"));
  EXPECT_EQ(search({"--summary", "middle"}).exitCode, kUsage);
  EXPECT_EQ(search({"--html", "--json"}).exitCode, kUsage);
  const std::string page = search({"--html"}).out;
  EXPECT_THAT(page, HasSubstr("<p>1 text</p>"));
  EXPECT_THAT(page, HasSubstr("<h2>R&#38;D &#60;script&#62;</h2>"));
  EXPECT_THAT(page, HasSubstr("a&#60;b&#62;.html</code>"));
  EXPECT_THAT(page, HasSubstr(" <mark>w55</mark> w56"));
  EXPECT_THAT(page, HasSubstr(" &#60;i&#62; <mark>cat</mark>&#34;</p>"));
  EXPECT_TRUE(page.ends_with("</html>\n"));
}

TEST_F(ProgramTest, SkipsWhatItCannotReadAndNumbersTheRest) {
  AddDocument("a.txt", "first");
  AddDocument("b.txt", "gone");
  AddDocument("c.txt", "last");
  std::filesystem::remove(File("docs/b.txt"));
  std::filesystem::create_symlink(File("nowhere"), File("docs/b.txt"));
  Create();
  const Outcome run = Vemra({"index"});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_THAT(run.out, HasSubstr("2 files, "));
  EXPECT_THAT(run.out, HasSubstr("\n2 words, 2 sentences, 2 paragraphs\n9 bytes"));
  // The folder's order is the system's; text and record agree in any.
  CTavoFileDict dictionary;
  dictionary.Open(folder_.Path("db.fin"));
  for (const int number : {1, 2}) {
    std::string name;
    EXPECT_EQ(dictionary.GetFileName(number, name), 1);
    const std::string word = name.ends_with("\\a.txt") ? "first" : "last";
    const Outcome found = Vemra({"search", word});
    EXPECT_THAT(found.out, HasSubstr("(text " + std::to_string(number) + ")")) << name;
  }
}

TEST_F(ProgramTest, TakesFiltersByFormatAndLeavesSubfoldersOut) {
  AddDocument("README.txt", "cat");
  AddDocument("notes.md", "cat");
  AddDocument("page.htm", "cat");
  AddDocument("page.html", "cat");
  AddDocument("sub/notes.md", "cat");
  CreateAndIndex({"--filter", "*.md;*.HTM", "--no-subfolders"});
  EXPECT_THAT(Find("cat"), UnorderedElementsAre("notes.md", "page.htm"));
}

struct Mistake {
  Arguments arguments;
  int exitCode;
  std::string message;
};

void ExpectRefused(const std::vector<Mistake>& mistakes) {
  for (const Mistake& mistake : mistakes) {
    SCOPED_TRACE(mistake.message);
    const Outcome run = RunVemra(mistake.arguments);
    EXPECT_EQ(run.exitCode, mistake.exitCode);
    EXPECT_THAT(run.err, HasSubstr(mistake.message));
  }
}

TEST_F(ProgramTest, SaysWhatIsWrong) {
  AddDocument("a.txt", "cat");
  const std::string db = Definition();
  ExpectRefused({
      {{}, kUsage, "subcommand"},
      {{"search", db, "x", "--frob"}, kUsage, "--frob"},
      {{"search", db, "x"}, kUsage, db + ": there is no such database"},
      {{"create", db, "--folder", File("no")}, kUsage, "there is no such folder"},
      {{"create", File("db.txt"), "--folder", "/"}, kUsage, "ends in .cfg"},
      {{"create", db, "--folder", "/", "--language", "Klingon"},
       kUsage,
       "no language is named Klingon; there are: Default"},
  });
  Create({"--language", "Default"});
  ExpectRefused({{{"create", db, "--folder", "/"}, kUsage, db + ": exists"},
                 {{"search", db, "x"}, kUsage, "db.vix"}});
  ASSERT_EQ(Vemra({"index"}).exitCode, kDone);
  ExpectRefused({{{"search", db, "cat \xc3\xa9t\xc3\xa9 (dog"}, kUsage, "\xa9 (dog\n          ^"},
                 {{"show", db, "2"}, kNothingFound, "the index holds 1"}});
  {
    const engine::IndexWriter writer(folder_.Path("db.vix"), test::ListOf({0}));
    ExpectRefused({{{"index", db}, kLocked, "being written"}});
  }
  const std::string definition = Read("db.cfg");
  const auto place = static_cast<std::ptrdiff_t>(Replace("db.cfg", "Format=Text", "Format=Word"));
  const auto line = std::count(definition.begin(), definition.begin() + place, '\n') + 1;
  ExpectRefused({{{"index", db}, kUsage, db + ":" + std::to_string(line) + ": "}});
  Write("db.cfg", definition);
  Write("db.vix", std::string(9000, 'x'));
  ExpectRefused({{{"search", db, "cat"}, kDamaged, "db.vix"}, {{"index", db}, kDamaged, "db.vix"}});
}

TEST_F(ProgramTest, SaysWhenAPatternStandsForTooManyWords) {
  AddDocument("a.txt", Words(300));
  CreateAndIndex();
  const Outcome run = Vemra({"search", "w*"});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_THAT(run.err, HasSubstr("w* stands for more than 200 words"));
}

// Every text of the index is found by a word that stands in all of them, and shown as it is.
void ExpectWholeTexts(const std::string& path) {
  engine::IndexDatabase index(path);
  const std::int64_t texts = index.CountTexts();
  for (const char* word : {"first", "last"}) {
    engine::Search search(index, test::Phrase({word}, test::ListOf({0})));
    EXPECT_EQ(search.Find(0, engine::FieldWeights()).total, texts);
  }
  EXPECT_EQ(index.GetConnection().QueryNumber("SELECT max(number) FROM texts"), texts);
  engine::Statement check(index.GetConnection(), "PRAGMA integrity_check");
  ASSERT_TRUE(check.Step());
  EXPECT_EQ(check.Bytes(0), "ok");
}

std::int64_t TextsNow(const std::string& path) try {
  return engine::IndexDatabase(path).CountTexts();
} catch (const engine::EngineError&) {
  return 0;
}

// Ends an indexing process with a signal as soon as its first batch is stored.
int StopIndexing(const std::string& definition, const std::string& path, std::int64_t textsBefore,
                 int signal) {
  const pid_t child = StartIndexing(definition);
  int status = 0;
  while (waitpid(child, &status, WNOHANG) == 0) {
    const std::int64_t texts = TextsNow(path);
    if (texts == 0 || texts == textsBefore) continue;
    kill(child, signal);
    waitpid(child, &status, 0);
    break;
  }
  return status;
}

TEST_F(ProgramTest, LeavesWholeTextsWhenItIsEnded) {
  constexpr int kDocuments = 9000;  // more than two batches
  for (int i = 0; i < kDocuments; ++i) {
    AddDocument(std::to_string(i) + ".txt", "first " + std::to_string(i) + " middle last");
  }
  const std::string db = Definition();
  const std::string index = folder_.Path("db.vix");
  Create();
  int status = StopIndexing(db, index, 0, SIGKILL);
  EXPECT_TRUE(WIFSIGNALED(status)) << "it was done before it could be ended";
  ExpectWholeTexts(index);
  EXPECT_LT(TextsNow(index), kDocuments);
  // Else it would be waited for until it expires.
  EXPECT_EQ(Vemra({"access", "--release", "--yes"}).exitCode, kDone);

  status = StopIndexing(db, index, TextsNow(index), SIGINT);
  ASSERT_TRUE(WIFEXITED(status));
  ExpectWholeTexts(index);

  ASSERT_EQ(Vemra({"index"}).exitCode, kDone);
  EXPECT_EQ(TextsNow(index), kDocuments);
  StopIndexing(db, index, kDocuments, SIGKILL);
  ExpectWholeTexts(index);
}

}  // namespace
}  // namespace vemra::commands
