#include "programs/commands/ConfigCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <vector>

#include "Support/foundation/Registry.h"
#include "Support/foundation/VemraConfig.h"
#include "programs/commands/ExitCode.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;

struct Row {
  std::string name;
  std::string value;
  const char* source;
};

// What the store says, and after it what follows from that.
std::vector<Row> ReadRows(const VemraConfig& config) {
  std::vector<Row> rows;
  for (const ConfigSetting& setting : config.GetSettings()) {
    rows.push_back({setting.key + '\\' + setting.name, setting.value,
                    setting.isStored ? "registry" : "default"});
  }
  rows.push_back({"Dictionary URL", config.GetDictionaryURL(), "derived"});
  rows.push_back({"Frame URL", config.GetFrameURL(), "derived"});
  rows.push_back({"Gate URL", config.GetVemraGateURL(), "derived"});
  rows.push_back({"Runs on the NT family", std::to_string(config.IsRunOnNT()), "system"});
  return rows;
}

void PrintText(const std::vector<Row>& rows, std::ostream& out) {
  std::size_t name = 0;
  std::size_t source = 0;
  for (const Row& row : rows) {
    name = std::max(name, row.name.size());
    source = std::max(source, std::string(row.source).size());
  }
  out << "Store: " << GetRegistryLocation() << '\n' << std::left;
  for (const Row& row : rows) {
    out << std::setw(int(name)) << row.name << "  " << std::setw(int(source)) << row.source << "  "
        << row.value << '\n';
  }
}

void PrintJson(const std::vector<Row>& rows, std::ostream& out) {
  Json settings = Json::array();
  for (const Row& row : rows)
    settings.push_back({{"name", row.name}, {"value", row.value}, {"source", row.source}});
  const Json document = {{"store", GetRegistryLocation()}, {"settings", std::move(settings)}};
  out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace

int RunConfig(bool json, Console& console) {
  const std::vector<Row> rows = ReadRows(VemraConfig());
  if (json) {
    PrintJson(rows, console.out);
  } else {
    PrintText(rows, console.out);
  }
  return kDone;
}

void AddConfigCommand(CLI::App& program, Console& console, int& exitCode) {
  const auto json = std::make_shared<bool>(false);
  CLI::App* command = program.add_subcommand(
      "config", "Print the server's configuration and where each value comes from");
  command->add_flag("--json", *json, "Print one JSON document");
  command->callback([json, &console, &exitCode] { exitCode = RunConfig(*json, console); });
}

}  // namespace vemra::commands
