#include "programs/commands/CheckCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "programs/check/DefinitionCheck.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;

struct Counts {
  int errors = 0;
  int warnings = 0;
};

const char* NameOf(check::Severity severity) {
  return severity == check::Severity::kError ? "error" : "warning";
}

Counts Count(const check::Report& report) {
  Counts counts;
  for (const check::FileReport& file : report.GetFiles()) {
    for (const check::Finding& finding : file.GetFindings()) {
      ++(finding.severity == check::Severity::kError ? counts.errors : counts.warnings);
    }
  }
  return counts;
}

std::string Counted(std::size_t number, const char* thing) {
  return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

void PrintText(const check::Report& report, const Counts& counts, Console& console) {
  for (const check::FileReport& file : report.GetFiles()) {
    const std::string path = PathForPerson(file.GetPath());
    for (const check::Finding& finding : file.GetFindings()) {
      console.out << path << ':' << finding.line << ": " << NameOf(finding.severity) << ": "
                  << finding.text << '\n';
    }
  }
  console.out.flush();
  console.err << Counted(report.GetFiles().size(), "file") << ": "
              << Counted(static_cast<std::size_t>(counts.errors), "error") << ", "
              << Counted(static_cast<std::size_t>(counts.warnings), "warning") << '\n';
}

void PrintJson(const check::Report& report, const Counts& counts, std::ostream& out) {
  Json files = Json::array();
  Json findings = Json::array();
  for (const check::FileReport& file : report.GetFiles()) {
    const std::string path = PathForPerson(file.GetPath());
    files.push_back(path);
    for (const check::Finding& finding : file.GetFindings()) {
      findings.push_back({{"file", path},
                          {"line", finding.line},
                          {"severity", NameOf(finding.severity)},
                          {"text", finding.text}});
    }
  }
  const Json document = {{"files", std::move(files)},
                         {"errors", counts.errors},
                         {"warnings", counts.warnings},
                         {"findings", std::move(findings)}};
  out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace

int RunCheck(const CheckOptions& options, Console& console) {
  const std::string path = PathFromPerson(options.definition);
  const check::Report report = check::CheckDefinition(path);
  const Counts counts = Count(report);
  if (options.json) {
    PrintJson(report, counts, console.out);
  } else {
    PrintText(report, counts, console);
  }
  return counts.errors == 0 ? kDone : kUsage;
}

void AddCheckCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* command =
      program.add_subcommand("check", "Read a definition's files and print what is wrong in them");
  command->add_option("DB.cfg", options->definition, "The database's definition")->required();
  command->add_flag("--json", options->json, "Print one JSON document");
  command->callback([options, &console, &exitCode] { exitCode = RunCheck(*options, console); });
}

}  // namespace vemra::commands
