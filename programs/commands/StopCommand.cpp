#include "programs/commands/StopCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "Support/services/StopIndexingEvent.h"
#include "programs/commands/Configuration.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"

namespace vemra::commands {

int RunStop(const std::string& definition, Console& console) {
  CTavoFileCFG configuration;
  LoadConfiguration(PathFromPerson(definition), configuration);
  const std::string& name = configuration.GetIndexName();
  const auto event = GetStopIndexingEvent(name.c_str(), 0);
  if (!event || event->Set() == 0) {
    console.err << "No indexer of " << name << " runs on this computer\n";
    return kNothingFound;
  }
  console.out << "Asked the indexer of " << name << " to stop\n";
  return kDone;
}

void AddStopCommand(CLI::App& program, Console& console, int& exitCode) {
  auto definition = std::make_shared<std::string>();
  CLI::App* command = program.add_subcommand("stop", "Ask a database's running indexer to stop");
  command->add_option("DB.cfg", *definition, "The database's definition")->required();
  command->callback(
      [definition, &console, &exitCode] { exitCode = RunStop(*definition, console); });
}

}  // namespace vemra::commands
