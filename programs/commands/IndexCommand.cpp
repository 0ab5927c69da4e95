#include "programs/commands/IndexCommand.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <memory>
#include <ostream>

#include "Support/foundation/Paths.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/Database.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/IndexRun.h"
#include "programs/commands/IndexingAccess.h"
#include "programs/commands/LockedError.h"

namespace vemra::commands {
namespace {

constexpr int kMaxWait = 7 * 24 * 3600;  // seconds

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
  ~Update() {
    if (ours_) configuration_.MarkUpdateFinished(complete_);
  }
  Update(const Update&) = delete;
  Update& operator=(const Update&) = delete;

  void SetComplete() { complete_ = true; }
  // Leaves the mark to another indexer, which may have set its own since.
  void Leave() { ours_ = false; }

 private:
  CTavoFileCFG& configuration_;
  bool complete_ = false;
  bool ours_ = true;
};

// Returns whether all was indexed.
bool IndexAndMark(IndexRun& run, CTavoFileCFG& configuration) {
  Update update(configuration);
  try {
    const bool complete = run.IndexAll();
    run.Finish(complete);
    if (complete) update.SetComplete();
    return complete;
  } catch (const LockedError&) {
    update.Leave();
    throw;
  }
}

}  // namespace

int RunIndex(const IndexOptions& options, Console& console) {
  Database database(options.definition);
  database.LoadIndexList();
  const std::string folder = database.GetIndexFolder();
  if (CreatePath(folder, /*lastIsFile=*/0) == 0) {
    throw CommandError(PathForPerson(folder) + ": the index folder cannot be created");
  }
  IndexingAccess access(database.GetConfiguration());
  if (!access.Take(std::chrono::seconds(options.wait), console)) {
    console.err << "Stopped: nothing was indexed\n";
    return kNothingFound;
  }
  Progress progress(console, CountFiles(database.GetIndexList()));
  IndexRun run(database, progress, access);  // before the update is marked: it may not be ours
  const bool complete = IndexAndMark(run, database.GetConfiguration());
  progress.Finish();
  PrintSummary(run.GetFigures(), progress.GetSeconds(), console.out);
  if (!complete) console.err << "Stopped: the index holds the documents up to here\n";
  return complete ? kDone : kNothingFound;
}

void AddIndexCommand(CLI::App& program, Console& console, int& exitCode) {
  auto options = std::make_shared<IndexOptions>();
  CLI::App* command = program.add_subcommand("index", "Build the index of a database anew");
  command->add_option("DB.cfg", options->definition, "The database's definition")->required();
  command
      ->add_option("--wait", options->wait,
                   "For how many seconds to wait while others hold the database (the default: " +
                       std::to_string(kDefaultWait) + ")")
      ->check(CLI::Range(0, kMaxWait));
  command->callback([options, &console, &exitCode] { exitCode = RunIndex(*options, console); });
}

}  // namespace vemra::commands
