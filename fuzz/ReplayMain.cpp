// Replays the seeds of a fuzz target in the ordinary tests: each whole, cut short at every byte,
// and changed in a few bytes at random. Usage: replay_NAME CORPUS_FOLDER
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "tests/TempFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int kChanges = 40;              // of each seed
constexpr std::size_t kLongestCut = 120;  // bytes; longer seeds are not cut at every byte
constexpr std::uint8_t kTelling[] = {0, '\n', '\r', ';', '[', ']', '=', '"', ',', ' ', 0x7F, 0xFF};

std::size_t Replay(std::string bytes, std::mt19937& random) {
  std::size_t runs = 0;
  const auto run = [&runs](const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    ++runs;
  };
  run(bytes);
  for (std::size_t i = 0; i < std::min(bytes.size(), kLongestCut); ++i) run(bytes.substr(0, i));
  for (int i = 0; i < kChanges && !bytes.empty(); ++i) {
    bytes[random() % bytes.size()] = static_cast<char>(kTelling[random() % std::size(kTelling)]);
    run(bytes);
  }
  return runs;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  std::vector<std::filesystem::path> seeds;
  for (const auto& entry : std::filesystem::directory_iterator(arguments[1]))
    seeds.push_back(entry.path());
  std::sort(seeds.begin(), seeds.end());
  std::mt19937 random(1);
  std::size_t runs = 0;
  for (const auto& seed : seeds) runs += Replay(vemra::test::ReadHostFile(seed), random);
  std::printf("%zu inputs from %zu seeds\n", runs, seeds.size());
  return seeds.empty() ? 1 : 0;
}
