#include "programs/commands/StatusCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>
#include <vector>

#include "programs/commands/DatabaseStatus.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/Languages.h"
#include "programs/commands/TimeText.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;

Json JsonTime(DateTime time) {
  return time == DateTime() ? Json() : Json(UtcText(time));
}

// With blanks between the thousands.
std::string Grouped(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t i = text.size(); i > 3;) text.insert(i -= 3, " ");
  return text;
}

std::string PackText(const DatabaseStatus& status) {
  std::string text = status.language.empty() ? kBuiltInLanguage : status.language;
  if (!status.pack.empty()) text += "  " + status.pack;
  if (!status.packFault.empty()) text += " (" + status.packFault + ')';
  return text;
}

std::string LastUpdateText(const DatabaseStatus& status) {
  const std::string time = status.lastUpdate == DateTime() ? "never" : LocalText(status.lastUpdate);
  return status.lastUpdateOk ? time : time + ", and one that failed since";
}

std::string TextsText(const DatabaseStatus& status) {
  if (status.texts) return Grouped(static_cast<std::uint64_t>(*status.texts));
  return status.indexFault.empty() ? "none, nothing was indexed yet"
                                   : "unknown: " + status.indexFault;
}

void PrintText(const DatabaseStatus& status, std::ostream& out) {
  const std::pair<const char*, std::string> rows[] = {
      {"Database", status.name},
      {"Language", PackText(status)},
      {"Loadable", status.loadable ? "yes" : "no"},
      {"Last update", LastUpdateText(status)},
      {"Next update", status.nextUpdate == DateTime() ? "none" : LocalText(status.nextUpdate)},
      {"Texts", TextsText(status)},
  };
  out << std::left;
  for (const auto& [name, value] : rows) out << std::setw(13) << name << value << '\n';
  std::size_t what = 0;
  std::size_t bytes = 0;
  for (const FileStatus& file : status.files) {
    what = std::max(what, file.what.size());
    bytes = std::max(bytes, file.Exists() ? Grouped(*file.bytes).size() : 0);
  }
  out << '\n';
  for (const FileStatus& file : status.files) {
    out << std::left << std::setw(static_cast<int>(what)) << file.what << "  " << std::right
        << std::setw(static_cast<int>(bytes)) << (file.Exists() ? Grouped(*file.bytes) : "-")
        << "  " << std::setw(19) << (file.Exists() ? LocalText(file.changed) : "missing") << "  "
        << file.path << '\n';
  }
  out << std::left;
}

void PrintJson(const DatabaseStatus& status, std::ostream& out) {
  Json files = Json::array();
  for (const FileStatus& file : status.files) {
    files.push_back({{"what", file.what},
                     {"path", file.path},
                     {"exists", file.Exists()},
                     {"bytes", file.Exists() ? Json(*file.bytes) : Json()},
                     {"changed", file.Exists() ? JsonTime(file.changed) : Json()}});
  }
  const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
  const Json document = {
      {"database", status.name},
      {"language",
       {{"name", status.language.empty() ? kBuiltInLanguage : status.language},
        {"pack", orNull(status.pack)},
        {"fault", orNull(status.packFault)}}},
      {"loadable", status.loadable},
      {"lastUpdate", {{"time", JsonTime(status.lastUpdate)}, {"ok", status.lastUpdateOk}}},
      {"nextUpdate", JsonTime(status.nextUpdate)},
      {"texts", status.texts ? Json(*status.texts) : Json()},
      {"indexFault", orNull(status.indexFault)},
      {"indexBytes", status.files.front().Exists() ? Json(*status.files.front().bytes) : Json()},
      {"files", std::move(files)}};
  out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace

int RunStatus(const StatusOptions& options, Console& console) {
  const DatabaseStatus status = ReadDatabaseStatus(options.definition);
  if (options.json) {
    PrintJson(status, console.out);
  } else {
    PrintText(status, console.out);
  }
  return kDone;
}

void AddStatusCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<StatusOptions>();
  CLI::App* command =
      program.add_subcommand("status", "Print a database at a glance: files, language, updates");
  command->add_option("DB.cfg", options->definition, "The database's definition")->required();
  command->add_flag("--json", options->json, "Print one JSON document");
  command->callback([options, &console, &exitCode] { exitCode = RunStatus(*options, console); });
}

}  // namespace vemra::commands
