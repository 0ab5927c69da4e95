// Cutting text into words and encoding it and, in the same run, what a user would pick instead. The
// text is the file text.bin in VEMRA_BENCH_INPUTS: documents that end with a NUL, their paragraphs
// with an empty line between them. Peers get whole documents, which suits them best.
#include <benchmark/benchmark.h>
#include <libxml/entities.h>
#include <sqlite3.h>
#include <unicode/ubrk.h>
#include <unicode/utext.h>
#include <xapian.h>

#include <boost/tokenizer.hpp>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "Support/definition/Definition.h"
#include "Support/foundation/Foundation.h"
#include "Support/text/Text.h"
#include "bench/AllocationCount.h"

namespace {

using benchmark::State;

std::vector<std::string_view> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    if (end > 0) parts.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + separator.size(), text.size()));
  }
  return parts;
}

struct Corpus {
  Corpus() {
    std::ifstream file(std::string(std::getenv("VEMRA_BENCH_INPUTS")) + "/text.bin",
                       std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(file), {});
    documents = Split(text, std::string_view("\0", 1));
    for (const std::string_view document : documents) {
      for (const std::string_view paragraph : Split(document, "\n\n"))
        paragraphs.emplace_back(paragraph);
    }
  }

  std::string text;
  std::vector<std::string_view> documents;
  std::vector<std::string> paragraphs;
};

const Corpus& Texts() {
  static const Corpus corpus;
  return corpus;
}

// For one run over all texts; a run that found no words is an error.
void Report(State& state, std::int64_t words) {
  if (words == 0) state.SkipWithError("no words");
  state.SetBytesProcessed(state.iterations() * std::int64_t(Texts().text.size()));
  state.counters["words"] = double(words);
}

vemra::TavoLangPack* WesternPack() {
  vemra::SetTavoValue("Languages\\Western", "Path",
                      vemra::FromHostPath(std::getenv("VEMRA_BENCH_PACK")));
  return vemra::TavoLangPack::Get("Western");
}

// --- cutting into words, sentences and paragraphs ---

void ParseOurs(State& state) {
  const vemra::TavoLangPack* const pack = WesternPack();
  if (pack == nullptr) state.SkipWithError("no language pack");
  const Corpus& corpus = Texts();
  std::int64_t words = 0;
  std::int64_t items = 0;
  const std::int64_t before = AllocationCount();
  for (auto _ : state) {
    words = items = 0;
    for (const std::string& paragraph : corpus.paragraphs) {
      vemra::TavoSection section(nullptr, paragraph, pack);
      section.ParseContents();
      words += section.GetWordsNumber();
      items += section.GetItemsNumber();
      benchmark::DoNotOptimize(section.GetLastSentenceNumber());
    }
  }
  state.counters["items"] = double(items);
  state.counters["allocations"] = double(AllocationCount() - before) / double(state.iterations());
  Report(state, words);
}
BENCHMARK(ParseOurs)->Name("parse/ours")->Unit(benchmark::kNanosecond);

// The same through the sink to an engine that does nothing with its calls.
void SinkOurs(State& state) {
  const vemra::TavoLangPack* const pack = WesternPack();
  if (pack == nullptr) state.SkipWithError("no language pack");
  vemra::TavoIndexingWrapper engine;
  static std::int64_t words;
  engine.on_newtxtno = [](unsigned short) { return std::uint32_t{1}; };
  engine.on_doword_addword = [](const char*, int, std::uint32_t, std::uint32_t, int) { ++words; };
  engine.on_fulllist_newparagraph = [] {};
  engine.on_fulllist_newsentence = [] {};
  vemra::CTavoFileINI definitions;
  vemra::CTavoField general;
  general.SetName("General");
  definitions.AddField(general);
  vemra::CTavoFieldList fields;
  fields.Set(0);
  vemra::TavoIndex index(definitions, engine);
  for (auto _ : state) {
    words = 0;
    index.OnDocumentStart("");
    for (const std::string& paragraph : Texts().paragraphs) {
      vemra::TavoSection section(nullptr, paragraph, pack);
      section.ParseContents();
      index.IndexSection(&section, fields);
    }
    index.OnDocumentEnd(nullptr, pack);
  }
  Report(state, words);
}
BENCHMARK(SinkOurs)->Name("sink/ours");

void ParseUnicode61(State& state) {
  const Corpus& corpus = Texts();
  sqlite3* database = nullptr;
  sqlite3_open(":memory:", &database);
  fts5_api* api = nullptr;
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(database, "SELECT fts5(?1)", -1, &statement, nullptr);
  sqlite3_bind_pointer(statement, 1, &api, "fts5_api_ptr", nullptr);
  sqlite3_step(statement);
  sqlite3_finalize(statement);
  fts5_tokenizer functions;
  void* context = nullptr;
  Fts5Tokenizer* tokenizer = nullptr;
  if (api == nullptr || api->xFindTokenizer(api, "unicode61", &context, &functions) != SQLITE_OK ||
      functions.xCreate(context, nullptr, 0, &tokenizer) != SQLITE_OK) {
    state.SkipWithError("no unicode61");
    return;
  }
  std::int64_t words = 0;
  for (auto _ : state) {
    words = 0;
    for (const std::string_view document : corpus.documents) {
      functions.xTokenize(tokenizer, &words, FTS5_TOKENIZE_DOCUMENT, document.data(),
                          int(document.size()), [](void* count, int, const char*, int, int, int) {
                            ++*static_cast<std::int64_t*>(count);
                            return SQLITE_OK;
                          });
    }
  }
  functions.xDelete(tokenizer);
  sqlite3_close(database);
  Report(state, words);
}
BENCHMARK(ParseUnicode61)->Name("parse/fts5-unicode61");
BENCHMARK(ParseUnicode61)->Name("sink/fts5-unicode61");

void ParseIcu(State& state) {
  const Corpus& corpus = Texts();
  UErrorCode error = U_ZERO_ERROR;
  UBreakIterator* const breaks = ubrk_open(UBRK_WORD, "en", nullptr, 0, &error);
  UText text = UTEXT_INITIALIZER;
  std::int64_t words = 0;
  for (auto _ : state) {
    words = 0;
    for (const std::string_view document : corpus.documents) {
      utext_openUTF8(&text, document.data(), std::int64_t(document.size()), &error);
      ubrk_setUText(breaks, &text, &error);
      ubrk_first(breaks);
      while (ubrk_next(breaks) != UBRK_DONE)
        words += ubrk_getRuleStatus(breaks) >= UBRK_WORD_NONE_LIMIT ? 1 : 0;
    }
  }
  utext_close(&text);
  ubrk_close(breaks);
  Report(state, U_SUCCESS(error) ? words : 0);
}
BENCHMARK(ParseIcu)->Name("parse/icu");

void ParseXapian(State& state) {
  const Corpus& corpus = Texts();
  std::int64_t words = 0;
  for (auto _ : state) {
    words = 0;
    for (const std::string_view document : corpus.documents) {
      Xapian::Document terms;
      Xapian::TermGenerator generator;
      generator.set_document(terms);
      generator.set_stemming_strategy(Xapian::TermGenerator::STEM_NONE);
      generator.index_text(Xapian::Utf8Iterator(document.data(), document.size()));
      words += generator.get_termpos();
    }
  }
  Report(state, words);
}
BENCHMARK(ParseXapian)->Name("parse/xapian");

void ParseBoost(State& state) {
  const Corpus& corpus = Texts();
  using Separator = boost::char_separator<char>;
  std::int64_t words = 0;
  for (auto _ : state) {
    words = 0;
    for (const std::string_view document : corpus.documents) {
      const boost::tokenizer<Separator, const char*> tokens(
          document.data(), document.data() + document.size(), Separator());
      for (const std::string& token : tokens) {
        benchmark::DoNotOptimize(token.data());
        ++words;
      }
    }
  }
  Report(state, words);
}
BENCHMARK(ParseBoost)->Name("parse/boost-tokenizer");

// --- text as HTML ---

void EncodeOurs(State& state) {
  const Corpus& corpus = Texts();
  vemra::CTavoEntity entity;
  std::int64_t size = 0;
  std::string text;
  for (auto _ : state) {
    size = 0;
    for (const std::string& paragraph : corpus.paragraphs) {
      text = paragraph;
      entity.TranslateAllEntities(text);
      size += std::int64_t(text.size());
    }
  }
  Report(state, size);
}
BENCHMARK(EncodeOurs)->Name("entity-encode/ours");

void EncodeLibxml2(State& state) {
  const Corpus& corpus = Texts();
  std::int64_t size = 0;
  for (auto _ : state) {
    size = 0;
    for (const std::string& paragraph : corpus.paragraphs) {
      xmlChar* const text =
          xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(paragraph.c_str()));
      size += std::int64_t(xmlStrlen(text));
      xmlFree(text);
    }
  }
  Report(state, size);
}
BENCHMARK(EncodeLibxml2)->Name("entity-encode/libxml2");

// --- a language pack from its file ---

void LoadOurs(State& state) {
  WesternPack();
  for (auto _ : state) {
    vemra::TavoLangPack::Release("Western");
    if (vemra::TavoLangPack::Get("Western") == nullptr) state.SkipWithError("not loaded");
  }
}
BENCHMARK(LoadOurs)->Name("pack-load/ours");

}  // namespace

BENCHMARK_MAIN();
