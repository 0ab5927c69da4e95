#include "programs/commands/DictionaryCommand.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Support/text/LangPack.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/Database.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/SearchAccess.h"
#include "programs/engine/Dictionary.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Query.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kMaxCount = 1000000;
constexpr int kNumberWidth = 12;

// A field's words are those of every field whose text also counts into it.
CTavoFieldList ColumnsOf(const std::string& field, Database& database,
                         const engine::IndexDatabase& index) {
  CTavoFieldList columns;
  if (field.empty()) {
    for (const int fieldno : index.GetColumns()) columns.Set(fieldno);
    return columns;
  }
  const engine::QueryLanguage language =
      engine::MakeQueryLanguage(database.GetFields(), database.GetPack());
  const auto* found = language.FindField(database.GetCodePage().FromUtf8(field));
  if (found == nullptr) throw CommandError("no field is named " + field);
  return found->columns;
}

void PrintText(const engine::DictionaryPart& part, const CodePage& codePage, std::ostream& out) {
  out << std::right << std::setw(kNumberWidth) << "texts" << std::setw(kNumberWidth) << "places"
      << "  word\n";
  for (const engine::DictionaryWord& word : part.words) {
    out << std::setw(kNumberWidth) << word.texts << std::setw(kNumberWidth) << word.occurrences
        << "  " << codePage.ToUtf8(word.word) << '\n';
  }
  if (part.hasMore) out << "More words follow; --count N prints N of them.\n";
}

void PrintJson(const engine::DictionaryPart& part, const std::string& prefix,
               const CodePage& codePage, std::ostream& out) {
  Json words = Json::array();
  for (const engine::DictionaryWord& word : part.words) {
    words.push_back({{"word", codePage.ToUtf8(word.word)},
                     {"texts", word.texts},
                     {"occurrences", word.occurrences}});
  }
  const Json document = {{"prefix", prefix}, {"more", part.hasMore}, {"words", std::move(words)}};
  out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace

int RunDictionary(const DictionaryOptions& options, Console& console) {
  Database database(options.definition);
  const SearchAccess access(database.GetConfiguration());
  engine::IndexDatabase index(database.GetIndexPath());
  const CodePage& codePage = database.GetCodePage();
  std::string prefix = codePage.FromUtf8(options.prefix);
  database.GetPack()->ToIndex(prefix);
  const engine::DictionaryPart part = engine::ReadDictionary(
      index, prefix, ColumnsOf(options.field, database, index), options.count);
  if (options.json) {
    PrintJson(part, codePage.ToUtf8(prefix), codePage, console.out);
  } else if (part.words.empty()) {
    console.err << "No word begins with " << codePage.ToUtf8(prefix) << '\n';
  } else {
    PrintText(part, codePage, console.out);
  }
  return part.words.empty() ? kNothingFound : kDone;
}

void AddDictionaryCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<DictionaryOptions>();
  CLI::App* command =
      program.add_subcommand("dictionary", "Print the words of the index that begin with a prefix");
  command->add_option("DB.cfg", options->definition, "The database's definition")->required();
  command->add_option("PREFIX", options->prefix, "How the words begin; \"\" for every word")
      ->required();
  command->add_option("--field", options->field, "Only words of this field");
  command->add_option("--count", options->count, "How many words to print (the default: 100)")
      ->check(CLI::Range(0, kMaxCount));
  command->add_flag("--json", options->json, "Print one JSON document");
  command->callback(
      [options, &console, &exitCode] { exitCode = RunDictionary(*options, console); });
}

}  // namespace vemra::commands
