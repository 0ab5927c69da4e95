// The log, the trace and the registry and, in the same run, what a user would pick instead. The
// registry store is the one that VEMRA_REGISTRY names, and everything is written beside it. A side
// that does not do what it should is an error.
#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "Support/foundation/Foundation.h"
#include "Support/services/Services.h"

namespace {

namespace fs = std::filesystem;
using benchmark::State;

constexpr char kIndexed[] = "Z:\\srv\\library\\manuals\\2024\\installation.html";

fs::path Folder() {
  return fs::absolute(std::getenv("VEMRA_REGISTRY")).parent_path();
}

std::int64_t LineCount(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::count(std::istreambuf_iterator<char>(file), {}, '\n');
}

void CheckLines(State& state, const fs::path& path, std::int64_t before) {
  if (LineCount(path) - before != state.iterations()) state.SkipWithError("lines are missing");
}

// --- one line of the log, formatted, dated and flushed ---

void LogOurs(State& state) {
  vemra::TavoLog& log = vemra::TavoLog::GetLog();
  const std::string database = "library";
  const fs::path path = Folder() / "library.txt";
  const std::int64_t before = fs::exists(path) ? LineCount(path) : 0;
  for (auto _ : state) {
    log.WriteMessage(vemra::kLogFatalError, database, 1, "indexed %s", kIndexed);
  }
  CheckLines(state, path, before);
}
BENCHMARK(LogOurs)->Name("log-flushed/ours");

void LogPeer(State& state) {
  const fs::path path = Folder() / "spdlog.txt";
  spdlog::logger log("library", std::make_shared<spdlog::sinks::basic_file_sink_mt>(path.string()));
  log.flush_on(spdlog::level::trace);
  const std::int64_t before = LineCount(path);
  for (auto _ : state) log.critical("indexed {}", kIndexed);
  CheckLines(state, path, before);
}
BENCHMARK(LogPeer)->Name("log-flushed/peer");

// --- a call whose level is filtered out ---

void TraceOurs(State& state) {
  vemra::TavoTrace& trace = vemra::TavoTrace::GetTracer();
  if (!trace.IsTraced(vemra::kTraceServer, 2)) state.SkipWithError("the trace is not open");
  for (auto _ : state) {
    trace.Trace("ServicesBench.cpp", __LINE__, vemra::kTraceServer, 1, "query begins");
    benchmark::ClobberMemory();
  }
}
BENCHMARK(TraceOurs)->Name("trace-off/ours");

void TracePeer(State& state) {
  const fs::path path = Folder() / "spdlog-trace.txt";
  spdlog::logger log("library", std::make_shared<spdlog::sinks::basic_file_sink_mt>(path.string()));
  log.set_level(spdlog::level::info);
  for (auto _ : state) {
    log.debug("query begins");
    benchmark::ClobberMemory();
  }
}
BENCHMARK(TracePeer)->Name("trace-off/peer");

// --- one number of the registry ---

void RegistryOurs(State& state) {
  vemra::SetTavoValue("Vemra Server", "QueryPort", 8080U);
  const std::string key = "Vemra Server";
  const std::string name = "QueryPort";
  for (auto _ : state) {
    std::uint32_t number = 0;
    vemra::GetTavoValue(key, name, number);
    if (number != 8080) state.SkipWithError("another number");
  }
}
BENCHMARK(RegistryOurs)->Name("registry-read/ours");

// A prepared look-up by key and name, in a file of the same journal mode.
void RegistryPeer(State& state) {
  const fs::path path = Folder() / "peer.db";
  fs::remove(path);
  sqlite3* db = nullptr;
  sqlite3_stmt* select = nullptr;
  sqlite3_open(path.c_str(), &db);
  sqlite3_exec(db,
               "PRAGMA journal_mode=WAL;"
               "CREATE TABLE settings(key TEXT, name TEXT, number INTEGER, PRIMARY KEY(key, name));"
               "INSERT INTO settings VALUES('Vemra Server', 'QueryPort', 8080)",
               nullptr, nullptr, nullptr);
  sqlite3_prepare_v2(db, "SELECT number FROM settings WHERE key = ? AND name = ?", -1, &select,
                     nullptr);
  for (auto _ : state) {
    sqlite3_bind_text(select, 1, "Vemra Server", -1, SQLITE_STATIC);
    sqlite3_bind_text(select, 2, "QueryPort", -1, SQLITE_STATIC);
    if (sqlite3_step(select) != SQLITE_ROW || sqlite3_column_int(select, 0) != 8080) {
      state.SkipWithError("another number");
    }
    sqlite3_reset(select);
  }
  sqlite3_finalize(select);
  sqlite3_close(db);
}
BENCHMARK(RegistryPeer)->Name("registry-read/peer");

void Config(State& state) {
  for (auto _ : state) {
    const vemra::VemraConfig config;
    benchmark::DoNotOptimize(config.GetQueryPort());
  }
}
BENCHMARK(Config)->Name("config/ours");

void ConfigureServices() {
  vemra::SetTavoValue("Vemra Info\\Log", "LogFilePath", vemra::FromHostPath(Folder().string()));
  vemra::SetTavoValue("Vemra Info\\Trace", "TraceFilePath",
                      vemra::FromHostPath((Folder() / "trace.txt").string()));
  vemra::SetTavoValue("Vemra Info\\Trace", "Module", std::uint32_t{vemra::kTraceServer});
  vemra::SetTavoValue("Vemra Info\\Trace", "Level", 2U);
}

}  // namespace

int main(int argc, char** argv) {
  if (std::getenv("VEMRA_REGISTRY") == nullptr) {
    std::fputs("VEMRA_REGISTRY must name a store to use; the user's own is not touched\n", stderr);
    return 2;
  }
  ConfigureServices();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
