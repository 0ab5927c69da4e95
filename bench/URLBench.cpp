// URLs taken apart, with host and decoded path, by us and by a strict parser of the standard's
// form: a list, one URL a line, in the file that VEMRA_BENCH_URLS names.
#include <benchmark/benchmark.h>
#include <uriparser/Uri.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "Support/services/URL.h"

namespace {

using benchmark::State;

std::vector<std::string> ReadLines() {
  const char* const path = std::getenv("VEMRA_BENCH_URLS");
  std::ifstream file(path == nullptr ? "" : path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

const std::vector<std::string>& Lines() {
  static const std::vector<std::string> lines = ReadLines();
  return lines;
}

// One URL an iteration, the list again and again. Both sides may refuse a few of the links that
// people write.
template <class Parse>
void ParseEach(State& state, Parse parse) {
  if (Lines().empty()) {
    state.SkipWithError("VEMRA_BENCH_URLS must name a list of URLs");
    return;
  }
  std::int64_t refused = 0;
  std::size_t at = 0;
  for (auto _ : state) {
    if (!parse(Lines()[at])) ++refused;
    at = at + 1 < Lines().size() ? at + 1 : 0;
  }
  if (refused > 1 + state.iterations() / 100) state.SkipWithError("too many URLs are refused");
}

bool ParseOurs(const std::string& line) {
  vemra::TavoURL url;
  const int result = url.Parse(line);
  benchmark::DoNotOptimize(url.GetServer().data());
  benchmark::DoNotOptimize(url.GetPath().data());
  return result != 0;
}

bool ParsePeer(const std::string& line) {
  UriUriA uri;
  const char* error = nullptr;
  if (uriParseSingleUriExA(&uri, line.data(), line.data() + line.size(), &error) != URI_SUCCESS) {
    return false;
  }
  benchmark::DoNotOptimize(uri.hostText.first);
  std::string path;
  for (const UriPathSegmentA* segment = uri.pathHead; segment != nullptr; segment = segment->next) {
    path += '/';
    const std::size_t start = path.size();
    path.append(segment->text.first, segment->text.afterLast);
    const char* const end = uriUnescapeInPlaceA(&path[start]);
    path.resize(std::size_t(end - path.data()));
  }
  benchmark::DoNotOptimize(path.data());
  uriFreeUriMembersA(&uri);
  return true;
}

BENCHMARK_CAPTURE(ParseEach, ours, ParseOurs)->Name("url/ours");
BENCHMARK_CAPTURE(ParseEach, peer, ParsePeer)->Name("url/peer");

}  // namespace

BENCHMARK_MAIN();
