#include "programs/commands/ShowCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <ostream>

#include "Support/text/HighlightWrapper.h"
#include "Support/text/Output.h"
#include "Support/text/ParseFile.h"
#include "programs/commands/Database.h"
#include "programs/commands/Excerpt.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/QuerySession.h"
#include "programs/commands/SearchAccess.h"
#include "programs/engine/HitSearch.h"
#include "programs/formats/Markup.h"

namespace vemra::commands {
namespace {

const HitStyle& ChooseStyle(bool html, bool colour) {
  static const HtmlStyle page;
  static const AnsiStyle ansi;
  static const BracketStyle brackets;
  if (html) return page;
  return colour ? static_cast<const HitStyle&>(ansi) : brackets;
}

// The document's text in the style, in UTF-8; nothing when it cannot be read.
std::optional<std::string> Highlight(FormatWrapper& wrapper, const std::string& path,
                                     std::vector<engine::Hit> hits, const HitStyle& style) {
  engine::HitSearch search(std::move(hits));
  TavoHighlightWrapper highlight(TavoHighlightWrapper::kWholeDocument, &search, 0,
                                 wrapper.GetLangPack());
  wrapper.SetHitStyle(&style);
  TavoParseFile* parser = wrapper.GetHighlightParser(&highlight);
  if (parser == nullptr) return std::nullopt;
  search.SetParser(parser);
  std::optional<std::string> shown;
  if (parser->ParseFile(path) != 0) {
    TavoOutput& output = *parser->GetOutput();
    output.TryPrintAll();
    std::string text = output.GetOutputBuffer();
    style.AppendEnd(output.GetHighlightCount(), text);
    shown = wrapper.GetCodePage().ToUtf8(text);
  }
  wrapper.FreeHighlightParser(parser);
  return shown;
}

void WritePage(const std::string& title, const std::string& text, std::ostream& out) {
  std::string escapedTitle;
  AppendEscaped(title, escapedTitle);
  out << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" << escapedTitle
      << "</title>\n<style>\nbody { max-width: 50em; margin: 2em auto; }\n"
         "pre { white-space: pre-wrap; }\nmark > a[href^=\"#hit\"] { text-decoration: none; }\n"
         "</style>\n</head>\n<body>\n"
      << text << "</body>\n</html>\n";
}

}  // namespace

int RunShow(const ShowOptions& options, Console& console) {
  Database database(options.definition);
  const SearchAccess access(database.GetConfiguration());
  engine::IndexDatabase index(database.GetIndexPath());
  const std::optional<engine::TextRecord> text = index.FindText(options.number);
  if (!text) {
    console.err << "There is no text " << options.number << "; the index holds "
                << index.CountTexts() << '\n';
    return kNothingFound;
  }
  std::optional<QuerySession> session;
  std::vector<engine::Hit> hits;
  if (!options.query.empty()) {
    session.emplace(database, index, options.query);
    hits = session->FindHits(options.number);
    console.err << session->GetWarning();
  }
  const std::unique_ptr<FormatWrapper> wrapper = database.MakeFormatWrapper(text->fileType);
  const std::optional<std::string> shown =
      Highlight(*wrapper, text->path, hits, ChooseStyle(options.html, console.colour));
  if (!shown) {
    console.err << PathForPerson(text->path) << ": cannot be read\n";
    return kNothingFound;
  }
  if (options.html) {
    WritePage(TitleOf(*text, database.GetCodePage()), *shown, console.out);
  } else {
    console.out << *shown << '\n';
  }
  return kDone;
}

void AddShowCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* command = program.add_subcommand("show", "Write a document with its hits highlighted");
  command->add_option("DB.cfg", options->definition, "The database's definition")->required();
  command->add_option("NUMBER", options->number, "The text's number, as search prints it")
      ->required();
  command->add_option("--query", options->query, "Highlight what this query matches");
  command->add_flag("--html", options->html, "Write a page with links from hit to hit");
  command->callback([options, &console, &exitCode] { exitCode = RunShow(*options, console); });
}

}  // namespace vemra::commands
