#include "programs/commands/AccessCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "Support/foundation/HostPath.h"
#include "Support/services/AccessFile.h"
#include "Support/services/DBAccess.h"
#include "programs/commands/AccessText.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/Configuration.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/LockedError.h"
#include "programs/commands/TimeText.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;
using Holders = std::vector<AccessEntry>;

[[noreturn]] void ThrowFailure(const CTavoFileCFG& configuration, const std::string& error) {
  const std::string failure = AccessFailureText(configuration, error);
  if (error.empty()) throw LockedError(failure);
  throw CommandError(failure);
}

void ReadHolders(AccessFile& file, const CTavoFileCFG& configuration, Holders& holders) {
  std::string error;
  const auto take = [&holders](const char* line) {
    return ParseAccessLine(line, holders.emplace_back());
  };
  if (file.ReadLines(take, &error) == 0) ThrowFailure(configuration, error);
}

// As the file says, whoever has expired.
Holders Look(const CTavoFileCFG& configuration) {
  const std::string path = configuration.GetAccessFile();
  Holders holders;
  std::error_code ignored;
  if (!std::filesystem::exists(ToHostPath(path), ignored)) return holders;  // nobody ever came
  AccessFile file(path);
  std::string error;
  if (file.OpenToLook(&error) == 0) ThrowFailure(configuration, error);
  ReadHolders(file, configuration, holders);
  return holders;
}

// Whether both are one line that was not renewed in between.
bool IsSame(const AccessEntry& a, const AccessEntry& b) {
  return a.name == b.name && a.threadId == b.threadId && a.lastUpdate == b.lastUpdate &&
         a.expires == b.expires;
}

// False when the line is no longer there as it was.
bool Remove(const AccessEntry& holder, const CTavoFileCFG& configuration) {
  AccessFile file(configuration.GetAccessFile());
  std::string error;
  if (file.Open(&error) == 0) ThrowFailure(configuration, error);
  Holders holders;
  ReadHolders(file, configuration, holders);
  if (std::erase_if(holders, [&](const AccessEntry& other) { return IsSame(holder, other); }) == 0)
    return false;
  if (file.Write(holders, &error) == 0) ThrowFailure(configuration, error);
  return true;
}

bool HasName(const AccessEntry& holder, const std::string& name) {
  return name == holder.name || name == HolderText(holder);
}

bool Agrees(const AccessEntry& holder, Console& console, std::istream& answers) {
  console.err << HoldersText({holder}) << "Remove this line? A holder that lives goes on without "
              << "protection. [y/N] " << std::flush;
  std::string answer;
  std::getline(answers, answer);
  return answer == "y" || answer == "Y" || answer == "yes";
}

int Release(const AccessOptions& options, const CTavoFileCFG& configuration, Console& console,
            std::istream& answers) {
  Holders holders = Look(configuration);
  if (!options.holder.empty()) {
    std::erase_if(holders, [&](const AccessEntry& h) { return !HasName(h, options.holder); });
  }
  if (options.yes && holders.size() > 1) {
    throw CommandError("several hold the database; say whose line to remove:\n" +
                       HoldersText(holders));
  }
  int removed = 0;
  for (const AccessEntry& holder : holders) {
    if (!options.yes && !Agrees(holder, console, answers)) continue;
    if (Remove(holder, configuration)) {
      console.out << "Removed " << HolderText(holder) << '\n';
      ++removed;
    } else {
      console.err << HolderText(holder) << " has renewed its line or left; it is not removed\n";
    }
  }
  if (holders.empty()) console.err << "There is no such line\n";
  return removed > 0 ? kDone : kNothingFound;
}

std::string StatusWord(const Holders& holders) {
  const auto has = [&](const char* name) {
    return std::any_of(holders.begin(), holders.end(),
                       [name](const AccessEntry& holder) { return holder.name == name; });
  };
  if (has(kIndexingName)) return "indexing";
  if (has(kIndexRequestName)) return "requested";
  return holders.empty() ? "free" : "searching";
}

void PrintText(const std::string& name, const Holders& holders, std::ostream& out) {
  out << name << ": " << StatusWord(holders) << '\n' << HoldersText(holders);
}

void PrintJson(const CTavoFileCFG& configuration, const Holders& holders, std::ostream& out) {
  Json list = Json::array();
  for (const AccessEntry& holder : holders) {
    const char* const kind = !holder.IsIndexer()            ? "search"
                             : holder.name == kIndexingName ? "indexing"
                                                            : "request";
    list.push_back({{"kind", kind},
                    {"computer", holder.IsIndexer() ? Json() : Json(holder.name)},
                    {"thread", holder.threadId},
                    {"renewed", UtcText(holder.lastUpdate)},
                    {"until", UtcText(holder.expires)},
                    {"expired", holder.expires < DateTime::Now()}});
  }
  const Json document = {{"database", configuration.GetIndexName()},
                         {"file", PathForPerson(configuration.GetAccessFile())},
                         {"status", StatusWord(holders)},
                         {"holders", std::move(list)}};
  out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace

int RunAccess(const AccessOptions& options, Console& console, std::istream& answers) {
  CTavoFileCFG configuration;
  LoadConfiguration(PathFromPerson(options.definition), configuration);
  if (options.release) return Release(options, configuration, console, answers);
  const Holders holders = Look(configuration);
  if (options.json) {
    PrintJson(configuration, holders, console.out);
  } else {
    PrintText(configuration.GetIndexName(), holders, console.out);
  }
  return kDone;
}

void AddAccessCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<AccessOptions>();
  CLI::App* command = program.add_subcommand("access", "Print who holds a database");
  command->add_option("DB.cfg", options->definition, "The database's definition")->required();
  command->add_flag("--json", options->json, "Print one JSON document");
  CLI::Option* release = command->add_flag(
      "--release", options->release, "Remove the line of a holder that is dead, after asking");
  command->add_option("--holder", options->holder, "Whose line, as it is printed")->needs(release);
  command->add_flag("--yes", options->yes, "Do not ask")->needs(release);
  command->callback(
      [options, &console, &exitCode] { exitCode = RunAccess(*options, console, std::cin); });
}

}  // namespace vemra::commands
