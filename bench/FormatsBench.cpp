// Taking the text of pages and highlighting whole documents and, in the same run, what a user would
// pick instead. VEMRA_BENCH_INPUTS holds pages.bin, HTML pages that end with a NUL each.
#include <benchmark/benchmark.h>
#include <libxml/HTMLparser.h>
#include <sqlite3.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "Support/foundation/Foundation.h"
#include "Support/text/Text.h"
#include "programs/engine/HitSearch.h"
#include "programs/formats/CodePage.h"
#include "programs/formats/Html.h"
#include "programs/formats/PlainText.h"
#include "programs/formats/Purposes.h"

namespace {

using benchmark::State;

const std::vector<std::string>& Pages() {
  static const std::vector<std::string> pages = [] {
    std::ifstream file(std::string(std::getenv("VEMRA_BENCH_INPUTS")) + "/pages.bin",
                       std::ios::binary);
    std::vector<std::string> read;
    for (std::string page; std::getline(file, page, '\0');) read.push_back(page);
    return read;
  }();
  return pages;
}

void CheckWork(State& state, std::size_t work) {
  if (work == 0) state.SkipWithError("nothing was done");
  state.counters["work"] = double(work);
}

// --- the text of HTML pages ---

class TextTaker : public vemra::HtmlParser {
 public:
  explicit TextTaker(vemra::TavoTHWrapper& wrapper)
      : HtmlParser(&wrapper, vemra::CodePage::Windows1252()) {
    EnableWrite(0);
  }
  void OnContents(std::string& run) override { text += run; }

  std::string text;

 protected:
  void HandleSection(vemra::TavoSection* section) override { delete section; }
};

void HtmlOurs(State& state) {
  vemra::TavoTHWrapper wrapper("", 0);
  std::size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    for (const std::string& page : Pages()) {
      TextTaker taker(wrapper);
      taker.ParseDocument(page);
      bytes += taker.text.size();
    }
  }
  CheckWork(state, bytes);
}
BENCHMARK(HtmlOurs)->Name("html/ours");

void HtmlLibxml2(State& state) {
  htmlSAXHandler handler{};
  handler.characters = [](void* context, const xmlChar* text, int length) {
    static_cast<std::string*>(context)->append(reinterpret_cast<const char*>(text),
                                               std::size_t(length));
  };
  std::size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    for (const std::string& page : Pages()) {
      std::string text;
      htmlParserCtxtPtr parser = htmlCreatePushParserCtxt(
          &handler, &text, page.data(), int(page.size()), nullptr, XML_CHAR_ENCODING_UTF8);
      htmlParseChunk(parser, nullptr, 0, 1);
      htmlFreeParserCtxt(parser);
      bytes += text.size();
    }
  }
  CheckWork(state, bytes);
}
BENCHMARK(HtmlLibxml2)->Name("html/libxml2");

// --- highlighting ---

constexpr std::string_view kWord = "function";

// The text of the pages that hold the word, one document a page.
const std::vector<std::string>& Documents() {
  static const std::vector<std::string> documents = [] {
    vemra::TavoTHWrapper wrapper("", 0);
    std::vector<std::string> texts;
    for (const std::string& page : Pages()) {
      TextTaker taker(wrapper);
      taker.ParseDocument(page);
      if (taker.text.find(" function ") != std::string::npos)
        texts.push_back(std::move(taker.text));
    }
    return texts;
  }();
  return documents;
}

// Collects where the word stands, as an index would have it.
class WordPlaces : public vemra::TavoHighlightSearch {
 public:
  void MarkWords(vemra::TavoSection& section, const vemra::CTavoFieldList&) override {
    const vemra::TavoLangPack& pack = *section.GetLangPack();
    for (const vemra::TavoWord* word = section.GetFirstWord(); word != nullptr;
         word = section.GetNextWord(word)) {
      if (!pack.CompareNoCase(word->GetStriptView(), kWord)) continue;
      hits.push_back({.fieldno = 0, .position = seen + word->GetNumber(), .words = &words});
    }
    seen += section.GetWordsNumber();
  }
  void Finish() override {}

  int seen = 0;
  std::vector<vemra::engine::Hit> hits;

 private:
  inline static const std::vector<std::string> words{std::string(kWord)};
};

int Highlight(vemra::TavoTHWrapper& wrapper, const std::string& document,
              vemra::TavoHighlightSearch& search) {
  static const vemra::HtmlStyle style;
  vemra::TavoHighlightWrapper request(vemra::TavoHighlightWrapper::kWholeDocument, &search);
  vemra::HighlightParser<vemra::PlainTextParser> parser(&wrapper, vemra::CodePage::Windows1252(),
                                                        &request, style);
  parser.Parse(document.c_str());
  benchmark::DoNotOptimize(parser.GetOutput()->GetOutputBuffer());
  return parser.GetOutput()->GetHighlightCount();
}

// Both sides know the hits from an index.
void HighlightOurs(State& state) {
  vemra::TavoTHWrapper wrapper("", 0);
  std::vector<std::vector<vemra::engine::Hit>> hitsOf;
  for (const std::string& document : Documents()) {
    WordPlaces places;
    Highlight(wrapper, document, places);
    hitsOf.push_back(places.hits);
  }
  int hits = 0;
  for (auto _ : state) {
    hits = 0;
    for (std::size_t i = 0; i < hitsOf.size(); ++i) {
      vemra::engine::HitSearch search(hitsOf[i]);
      hits += Highlight(wrapper, Documents()[i], search);
    }
  }
  CheckWork(state, std::size_t(hits));
}
BENCHMARK(HighlightOurs)->Name("highlight/ours");

void HighlightFts5(State& state) {
  sqlite3* database = nullptr;
  sqlite3_open(":memory:", &database);
  sqlite3_exec(database, "CREATE VIRTUAL TABLE texts USING fts5(text); BEGIN", nullptr, nullptr,
               nullptr);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(database, "INSERT INTO texts VALUES(?)", -1, &insert, nullptr);
  for (const std::string& document : Documents()) {
    const std::string utf8 = vemra::CodePage::Windows1252().ToUtf8(document);
    sqlite3_bind_text(insert, 1, utf8.data(), int(utf8.size()), SQLITE_TRANSIENT);
    sqlite3_step(insert);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);

  sqlite3_stmt* marked = nullptr;
  sqlite3_prepare_v2(database,
                     "SELECT highlight(texts, 0, '<mark>', '</mark>') FROM texts"
                     " WHERE texts MATCH 'function'",
                     -1, &marked, nullptr);
  std::size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    while (sqlite3_step(marked) == SQLITE_ROW) {
      bytes += std::size_t(sqlite3_column_bytes(marked, 0));
    }
    sqlite3_reset(marked);
  }
  sqlite3_finalize(marked);
  sqlite3_close(database);
  CheckWork(state, bytes);
}
BENCHMARK(HighlightFts5)->Name("highlight/fts5-highlight");

}  // namespace

BENCHMARK_MAIN();
