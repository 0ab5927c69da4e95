#include "programs/commands/SearchCommand.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "programs/commands/Database.h"
#include "programs/commands/Excerpt.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/QuerySession.h"
#include "programs/commands/SearchAccess.h"
#include "programs/commands/SortOption.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kMaxCount = 1000000;

// What is known of one hit. Strings are UTF-8.
struct Result {
  int rank;
  double score;
  engine::TextRecord text;
  std::string title;
  std::string path;
};

// Prints results one by one, so that their number does not matter.
class ResultPrinter {
 public:
  virtual ~ResultPrinter() = default;
  virtual void Start(const std::string& query, std::int64_t total) = 0;
  virtual void Print(const Result& result, FormatWrapper& wrapper,
                     std::vector<engine::Hit> hits) = 0;
  virtual void Finish() = 0;
};

class TextPrinter : public ResultPrinter {
 public:
  explicit TextPrinter(Console& console) : console_(console) {}

  void Start(const std::string&, std::int64_t total) override {
    console_.out << total << (total == 1 ? " text\n" : " texts\n");
  }

  void Print(const Result& result, FormatWrapper& wrapper, std::vector<engine::Hit> hits) override {
    const std::string summary = MakeExcerpt(wrapper, result.text, std::move(hits), Style());
    console_.out << '\n'
                 << result.rank << ". " << Bold(result.title) << "  (text " << result.text.number
                 << ")\n   " << result.path << '\n';
    if (!summary.empty()) console_.out << "   " << summary << '\n';
  }

  void Finish() override {}

 private:
  const HitStyle& Style() const {
    return console_.colour ? static_cast<const HitStyle&>(ansi_) : brackets_;
  }
  std::string Bold(const std::string& text) const {
    return console_.colour ? "\x1b[1m" + text + "\x1b[0m" : text;
  }

  Console& console_;
  AnsiStyle ansi_;
  BracketStyle brackets_;
};

class JsonPrinter : public ResultPrinter {
 public:
  explicit JsonPrinter(Console& console) : console_(console) {}

  void Start(const std::string& query, std::int64_t total) override {
    document_ = {{"query", query}, {"total", total}, {"hits", Json::array()}};
  }

  void Print(const Result& result, FormatWrapper& wrapper, std::vector<engine::Hit> hits) override {
    Json summary = Json::array();
    for (const ExcerptPiece& piece : MakeExcerptPieces(wrapper, result.text, std::move(hits))) {
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

std::unique_ptr<ResultPrinter> MakePrinter(bool json, Console& console) {
  if (json) return std::make_unique<JsonPrinter>(console);
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

  const std::unique_ptr<ResultPrinter> printer = MakePrinter(options.json, console);
  printer->Start(options.query, found.total);
  Wrappers wrappers(database);
  int rank = 0;
  for (const engine::FoundText& place : found.best) {
    std::optional<engine::TextRecord> text = index.FindText(place.number);
    if (!text) continue;  // gone since: an indexer has just begun anew
    Result result{++rank, place.score, std::move(*text), {}, {}};
    result.title = TitleOf(result.text, database.GetCodePage());
    result.path = PathForPerson(result.text.path);
    printer->Print(result, wrappers.Get(result.text.fileType), session.FindHits(place.number));
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
  command->add_flag("--json", options->json, "Print one JSON document");
  command->callback([options, &console, &exitCode] { exitCode = RunSearch(*options, console); });
}

}  // namespace vemra::commands
