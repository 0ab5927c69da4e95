#include "programs/commands/SearchCommand.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "programs/commands/Database.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/QuerySession.h"
#include "programs/commands/SearchAccess.h"
#include "programs/commands/SortOption.h"
#include "programs/formats/HitStyle.h"
#include "programs/formats/Markup.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kMaxCount = 1000000;

const std::map<std::string, SummaryKind> kSummaryKinds = {{"hits", SummaryKind::kHits},
                                                          {"start", SummaryKind::kStart}};

// What is known of one text that was found. Strings are UTF-8.
struct Result {
  int rank;
  double score;
  engine::TextRecord text;
  std::string title;
  std::string path;
  std::vector<SummaryPiece> summary;
};

// Prints results one by one, so that their number does not matter.
class ResultPrinter {
 public:
  virtual ~ResultPrinter() = default;
  virtual void Start(const std::string& query, std::int64_t total) = 0;
  virtual void Print(const Result& result) = 0;
  virtual void Finish() = 0;
};

std::string CountTexts(std::int64_t total) {
  return std::to_string(total) + (total == 1 ? " text" : " texts");
}

class TextPrinter : public ResultPrinter {
 public:
  explicit TextPrinter(Console& console) : console_(console) {}

  void Start(const std::string&, std::int64_t total) override {
    console_.out << CountTexts(total) << '\n';
  }

  void Print(const Result& result) override {
    console_.out << '\n'
                 << result.rank << ". " << Bold(result.title) << "  (text " << result.text.number
                 << ")\n   " << result.path << '\n';
    if (!result.summary.empty()) console_.out << "   " << Render(result.summary) << '\n';
  }

  void Finish() override {}

 private:
  std::string Render(const std::vector<SummaryPiece>& summary) const {
    const HitStyle& style = console_.colour ? static_cast<const HitStyle&>(ansi_) : brackets_;
    std::string text;
    int hit = 0;
    for (const SummaryPiece& piece : summary) {
      if (piece.isHit) style.AppendOpening(++hit, text);
      text += piece.text;
      if (piece.isHit) style.AppendClosing(hit, text);
    }
    return text;
  }
  std::string Bold(const std::string& text) const {
    return console_.colour ? "\x1b[1m" + text + "\x1b[0m" : text;
  }

  Console& console_;
  AnsiStyle ansi_;
  BracketStyle brackets_;
};

// A page that needs no other file.
class HtmlPrinter : public ResultPrinter {
 public:
  explicit HtmlPrinter(Console& console) : console_(console) {}

  void Start(const std::string& query, std::int64_t total) override {
    console_.out
        << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" << Escaped(query)
        << "</title>\n<style>\nbody { max-width: 50em; margin: 2em auto; }\n"
           "h2 { margin-bottom: 0; }\np { margin: 0.3em 0; }\n</style>\n</head>\n<body>\n<h1>"
        << Escaped(query) << "</h1>\n<p>" << CountTexts(total) << "</p>\n<ol>\n";
  }

  void Print(const Result& result) override {
    console_.out << "<li value=\"" << result.rank << "\">\n<h2>" << Escaped(result.title)
                 << "</h2>\n<p><code>" << Escaped(result.path) << "</code></p>\n<p>";
    for (const SummaryPiece& piece : result.summary) {
      console_.out << (piece.isHit ? "<mark>" : "") << Escaped(piece.text)
                   << (piece.isHit ? "</mark>" : "");
    }
    console_.out << "</p>\n</li>\n";
  }

  void Finish() override { console_.out << "</ol>\n</body>\n</html>\n"; }

 private:
  static std::string Escaped(const std::string& text) {
    std::string escaped;
    AppendEscaped(text, escaped);
    return escaped;
  }

  Console& console_;
};

class JsonPrinter : public ResultPrinter {
 public:
  explicit JsonPrinter(Console& console) : console_(console) {}

  void Start(const std::string& query, std::int64_t total) override {
    document_ = {{"query", query}, {"total", total}, {"hits", Json::array()}};
  }

  void Print(const Result& result) override {
    Json summary = Json::array();
    for (const SummaryPiece& piece : result.summary) {
      summary.push_back({{"text", piece.text}, {"hit", piece.isHit}});
    }
    document_["hits"].push_back({{"rank", result.rank},
                                 {"number", result.text.number},
                                 {"title", result.title},
                                 {"path", result.path},
                                 {"score", result.score},
                                 {"words", result.text.words},
                                 {"bytes", result.text.bytes},
                                 {"summary", std::move(summary)}});
  }

  // Paths hold any bytes; a byte that is no UTF-8 becomes the replacement character.
  void Finish() override {
    console_.out << document_.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
  }

 private:
  Console& console_;
  Json document_;
};

// The wrappers of the file types, made as they are needed.
class Wrappers {
 public:
  explicit Wrappers(Database& database) : database_(database) {}

  FormatWrapper& Get(int fileType) {
    std::unique_ptr<FormatWrapper>& wrapper = wrappers_[fileType];
    if (!wrapper) wrapper = database_.MakeFormatWrapper(fileType);
    return *wrapper;
  }

 private:
  Database& database_;
  std::map<int, std::unique_ptr<FormatWrapper>> wrappers_;
};

std::unique_ptr<ResultPrinter> MakePrinter(const SearchOptions& options, Console& console) {
  if (options.json) return std::make_unique<JsonPrinter>(console);
  if (options.html) return std::make_unique<HtmlPrinter>(console);
  return std::make_unique<TextPrinter>(console);
}

}  // namespace

int RunSearch(const SearchOptions& options, Console& console) {
  Database database(options.definition);
  const SearchAccess access(database.GetConfiguration());
  engine::IndexDatabase index(database.GetIndexPath());
  QuerySession session(database, index, options.query);
  const engine::FoundTexts found =
      options.sort.empty()
          ? session.Find(options.count)
          : session.FindSorted(options.count, ReadSortOption(options.sort, database));
  console.err << session.GetWarning();

  const std::unique_ptr<ResultPrinter> printer = MakePrinter(options, console);
  printer->Start(options.query, found.total);
  Wrappers wrappers(database);
  int rank = 0;
  for (const engine::FoundText& place : found.best) {
    std::optional<engine::TextRecord> text = index.FindText(place.number);
    if (!text) continue;  // gone since: an indexer has just begun anew
    Result result{++rank, place.score, std::move(*text), {}, {}, {}};
    result.title = TitleOf(result.text, database.GetCodePage());
    result.path = PathForPerson(result.text.path);
    result.summary = MakeSummary(wrappers.Get(result.text.fileType), result.text,
                                 session.FindHits(place.number), options.summary);
    printer->Print(result);
  }
  printer->Finish();
  return found.total > 0 ? kDone : kNothingFound;
}

void AddSearchCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<SearchOptions>();
  CLI::App* command = program.add_subcommand("search", "Print the texts that match a query");
  command->add_option("DB.cfg", options->definition, "The database's definition")->required();
  command->add_option("QUERY", options->query, "What to look for")->required();
  command->add_option("--count", options->count, "How many texts to print (the default: 10)")
      ->check(CLI::Range(0, kMaxCount));
  command->add_option("--sort", options->sort,
                      "Sort by this field instead of best first; -FIELD for descending");
  command->add_option("--summary", options->summary, "The words around the hits, or the first ones")
      ->transform(CLI::CheckedTransformer(kSummaryKinds));
  CLI::Option* html = command->add_flag("--html", options->html, "Print a page");
  command->add_flag("--json", options->json, "Print one JSON document")->excludes(html);
  command->callback([options, &console, &exitCode] { exitCode = RunSearch(*options, console); });
}

}  // namespace vemra::commands
