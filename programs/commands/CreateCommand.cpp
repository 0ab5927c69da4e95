#include "programs/commands/CreateCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>

#include "Support/foundation/HostPath.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/Definition.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/Languages.h"

namespace vemra::commands {
namespace {

namespace fs = std::filesystem;

// The settings files are read line by line, and an item line ends at a comma.
constexpr const char* kForbidden = "\r\n\"";

std::string DefinitionPath(const std::string& name) {
  if (fs::path(name).extension() != ".cfg") {
    throw CommandError(name + ": the name of a definition ends in .cfg");
  }
  std::string path = PathFromPerson(name);
  if (!fs::is_directory(fs::path(ToHostPath(path)).parent_path())) {
    throw CommandError(name + ": there is no such folder");
  }
  return path;
}

std::string FolderPath(const std::string& folder) {
  if (!fs::is_directory(folder)) throw CommandError(folder + ": there is no such folder");
  if (folder.find_first_of(kForbidden) != std::string::npos) {
    throw CommandError(folder + ": quotes and line ends cannot be kept in an index list");
  }
  return PathFromPerson(folder);
}

std::vector<std::string> SplitFilter(const std::string& filter) {
  if (filter.find_first_of(kForbidden) != std::string::npos) {
    throw CommandError("--filter: quotes and line ends are no part of a pattern");
  }
  std::vector<std::string> patterns;
  std::string pattern;
  for (const char c : filter + ';') {
    if (c != ';' && c != ',') {
      pattern += c;
    } else if (!pattern.empty()) {
      patterns.push_back(std::move(pattern));
      pattern.clear();
    }
  }
  return patterns;
}

void RefuseToOverwrite(const std::string& path) {
  for (const std::string& file : DefinitionFiles(path)) {
    const std::string hostPath = ToHostPath(file);
    if (fs::exists(hostPath)) throw CommandError(hostPath + ": exists; --force overwrites it");
  }
}

std::string ChooseLanguage(const std::string& name) {
  if (name.empty()) return RegisterLanguage(kUsualLanguage) ? kUsualLanguage : std::string();
  if (name == kBuiltInLanguage) return {};
  if (RegisterLanguage(name)) return name;
  std::string known;
  for (const std::string& language : ListLanguages()) known += ' ' + language;
  throw CommandError("no language is named " + name + "; there are:" + known);
}

}  // namespace

int RunCreate(const CreateOptions& options, Console& console) {
  DefinitionRequest request;
  request.path = DefinitionPath(options.definition);
  for (const std::string& folder : options.folders) request.folders.push_back(FolderPath(folder));
  request.filters = SplitFilter(options.filter);
  if (!options.filter.empty() && request.filters.empty()) {
    throw CommandError("--filter: there is no pattern");
  }
  request.subfolders = !options.noSubfolders;
  if (!options.force) RefuseToOverwrite(request.path);
  request.language = ChooseLanguage(options.language);
  WriteDefinition(request);
  console.out << "Wrote " << PathForPerson(request.path) << " (language "
              << (request.language.empty() ? kBuiltInLanguage : request.language) << ")\n";
  return kDone;
}

void AddCreateCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<CreateOptions>();
  CLI::App* command = program.add_subcommand("create", "Write the definition of a new database");
  command->add_option("DB.cfg", options->definition, "The definition to write")->required();
  command->add_option("--folder", options->folders, "A folder to index; may be repeated")
      ->required()
      ->allow_extra_args(true);
  command->add_option("--filter", options->filter,
                      "File name patterns, such as \"*.html;*.txt\" (the default: HTML and text)");
  command->add_option("--language", options->language, "The language pack (the default: Western)");
  command->add_flag("--no-subfolders", options->noSubfolders, "Leave out what is in subfolders");
  command->add_flag("--force", options->force, "Overwrite a definition that exists");
  command->callback([options, &console, &exitCode] { exitCode = RunCreate(*options, console); });
}

}  // namespace vemra::commands
