#include "programs/commands/IndexCommand.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <ostream>

#include "Support/foundation/Paths.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/Database.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/IndexRun.h"

namespace vemra::commands {
namespace {

void PrintSummary(const IndexFigures& figures, double seconds, std::ostream& out) {
  char line[320];
  std::snprintf(line, sizeof line,
                "%lld files, %lld skipped\n"
                "%lld words, %lld sentences, %lld paragraphs\n"
                "%lld bytes in %.2f seconds, %.1f MB/s\n",
                static_cast<long long>(figures.files), static_cast<long long>(figures.skipped),
                static_cast<long long>(figures.words), static_cast<long long>(figures.sentences),
                static_cast<long long>(figures.paragraphs), static_cast<long long>(figures.bytes),
                seconds, seconds > 0 ? static_cast<double>(figures.bytes) / seconds / 1e6 : 0.0);
  out << line;
}

// Marks the update in the configuration for as long as it runs, however it ends.
class Update {
 public:
  explicit Update(CTavoFileCFG& configuration) : configuration_(configuration) {
    configuration_.MarkUpdateStarted();
  }
  ~Update() { configuration_.MarkUpdateFinished(complete_); }
  Update(const Update&) = delete;
  Update& operator=(const Update&) = delete;

  void SetComplete() { complete_ = true; }

 private:
  CTavoFileCFG& configuration_;
  bool complete_ = false;
};

}  // namespace

int RunIndex(const std::string& definition, Console& console) {
  Database database(definition);
  database.LoadIndexList();
  const std::string folder = database.GetIndexFolder();
  if (CreatePath(folder, /*lastIsFile=*/0) == 0) {
    throw CommandError(PathForPerson(folder) + ": the index folder cannot be created");
  }
  const StopSignal stop;
  Progress progress(console, CountFiles(database.GetIndexList()));
  IndexRun run(database, progress, stop);  // before the update is marked: it may not be ours to run
  Update update(database.GetConfiguration());
  const bool complete = run.IndexAll();
  run.Finish(complete);
  if (complete) update.SetComplete();
  progress.Finish();
  PrintSummary(run.GetFigures(), progress.GetSeconds(), console.out);
  if (!complete) console.err << "Stopped: the index holds the documents up to here\n";
  return complete ? kDone : kNothingFound;
}

void AddIndexCommand(CLI::App& program, Console& console, int& exitCode) {
  auto definition = std::make_shared<std::string>();
  CLI::App* command = program.add_subcommand("index", "Build the index of a database anew");
  command->add_option("DB.cfg", *definition, "The database's definition")->required();
  command->callback(
      [definition, &console, &exitCode] { exitCode = RunIndex(*definition, console); });
}

}  // namespace vemra::commands
