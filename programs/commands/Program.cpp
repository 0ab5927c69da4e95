#include "programs/commands/Program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>

#include "programs/commands/AccessCommand.h"
#include "programs/commands/CheckCommand.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/ConfigCommand.h"
#include "programs/commands/CreateCommand.h"
#include "programs/commands/DictionaryCommand.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/IndexCommand.h"
#include "programs/commands/LockedError.h"
#include "programs/commands/PackCommand.h"
#include "programs/commands/RegistryCommand.h"
#include "programs/commands/SearchCommand.h"
#include "programs/commands/ShowCommand.h"
#include "programs/commands/StatusCommand.h"
#include "programs/commands/StopCommand.h"
#include "programs/engine/EngineError.h"

namespace vemra::commands {
namespace {

int ExitCodeOf(engine::Fault fault) {
  switch (fault) {
    case engine::Fault::kLocked:
      return kLocked;
    case engine::Fault::kDamaged:
      return kDamaged;
    default:
      return kUsage;
  }
}

void Report(Console& console, const char* text) {
  console.out.flush();
  console.err << "vemra: " << text << '\n';
}

}  // namespace

int RunProgram(std::vector<std::string> arguments, Console& console) {
  CLI::App program("Indexes folders of documents and searches them", "vemra");
  program.require_subcommand(1);
  program.footer(
      "Exit codes: 0 found or done, 1 nothing found or stopped, 2 wrong usage or configuration,\n"
      "3 locked: somebody else holds the database, 4 the index is damaged.");
  int exitCode = kDone;
  AddCreateCommand(program, console, exitCode);
  AddIndexCommand(program, console, exitCode);
  AddSearchCommand(program, console, exitCode);
  AddShowCommand(program, console, exitCode);
  AddDictionaryCommand(program, console, exitCode);
  AddCheckCommand(program, console, exitCode);
  AddStatusCommand(program, console, exitCode);
  AddAccessCommand(program, console, exitCode);
  AddStopCommand(program, console, exitCode);
  AddRegistryCommand(program, console, exitCode);
  AddConfigCommand(program, console, exitCode);
  AddPackCommand(program, console, exitCode);
  try {
    std::reverse(arguments.begin(), arguments.end());  // as CLI takes them
    program.parse(arguments);
  } catch (const CLI::ParseError& error) {
    return program.exit(error, console.out, console.err) == 0 ? kDone : kUsage;
  } catch (const CommandError& error) {
    Report(console, error.what());
    exitCode = kUsage;
  } catch (const LockedError& error) {
    Report(console, error.what());
    exitCode = kLocked;
  } catch (const engine::EngineError& error) {
    Report(console, error.what());
    exitCode = ExitCodeOf(error.GetFault());
  } catch (const std::exception& error) {
    Report(console, error.what());
    exitCode = kUsage;
  }
  console.out.flush();
  return exitCode;
}

}  // namespace vemra::commands
