// One cycle on an access file of four holders and, in the same run, what the system takes to open,
// write and close such a file alone. The files are beside the registry store of the benchmark.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "Support/foundation/Foundation.h"
#include "Support/services/Services.h"

namespace {

namespace fs = std::filesystem;
using benchmark::State;

constexpr int kOthers = 3;

fs::path File(const char* name) {
  return fs::absolute(std::getenv("VEMRA_REGISTRY")).parent_path() / name;
}

std::string LinesOfOthers() {
  const vemra::DateTime now = vemra::DateTime::Now();
  std::string text;
  for (std::uint32_t i = 0; i < kOthers; ++i) {
    text += vemra::FormatAccessLine({now, now, now + vemra::TimeSpan(100000), 0x1A4 + i, "OTHER"});
  }
  return text;
}

void CycleOurs(State& state) {
  const fs::path path = File("cycle.acc");
  std::ofstream(path) << LinesOfOthers();
  vemra::TavoDBAccess access(vemra::FromHostPath(path.string()));
  for (auto _ : state) {
    if (access.GetSearchAccess(vemra::TimeSpan(600)) == 0) state.SkipWithError("refused");
  }
  if (access.GetHolders().size() != kOthers + 1) state.SkipWithError("holders are missing");
}
BENCHMARK(CycleOurs)->Name("access-cycle/ours");

void CyclePeer(State& state) {
  const fs::path path = File("bare.acc");
  const std::string text = LinesOfOthers() + LinesOfOthers().substr(0, 74);
  for (auto _ : state) {
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (::write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
      state.SkipWithError("not written");
    }
    ::close(file);
  }
}
BENCHMARK(CyclePeer)->Name("access-cycle/peer");

}  // namespace
