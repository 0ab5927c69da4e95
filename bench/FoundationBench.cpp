// The foundation and, in the same run, what a user would pick instead. The inputs are in the folder
// that VEMRA_BENCH_INPUTS names. A side that gives another answer than the other is an error.
#define SI_NO_CONVERSION  // plain bytes
#include <SimpleIni.h>
#include <benchmark/benchmark.h>
#include <fnmatch.h>
#include <glib.h>
#include <re2/re2.h>
#include <zlib.h>

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Support/foundation/Foundation.h"

namespace {

namespace fs = std::filesystem;
using benchmark::State;

fs::path Input(const char* name) {
  const char* const folder = std::getenv("VEMRA_BENCH_INPUTS");
  return fs::path(folder == nullptr ? "." : folder) / name;
}

std::string ReadWhole(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> ReadLines(const fs::path& path) {
  std::ifstream file(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

// --- settings: 125 sections of 8 keys ---

const std::vector<std::string>& Sections() {
  static const auto names = [] {
    std::vector<std::string> made;
    for (int i = 0; i < 125; ++i) made.push_back("Index " + std::to_string(i));
    return made;
  }();
  return names;
}

const std::vector<std::string> kKeys = {"Name",       "SourceFolder", "IndexFolder", "Enabled",
                                        "Extensions", "MaxSize",      "LastRun",     "Title"};

template <typename Read>
std::size_t ReadAll(Read read) {
  std::size_t sum = 0;
  for (const std::string& section : Sections()) {
    for (const std::string& key : kKeys) sum += read(section, key);
  }
  return sum;
}

// Both sides must read this many characters, so that neither can skip work.
std::size_t Expected() {
  static const std::size_t sum = [] {
    CSimpleIniA file;
    file.LoadFile(Input("settings.ini").c_str());
    return ReadAll([&](const std::string& section, const std::string& key) {
      return std::strlen(file.GetValue(section.c_str(), key.c_str(), ""));
    });
  }();
  return sum;
}

void Compare(State& state, std::size_t sum) {
  if (sum != Expected()) state.SkipWithError("the values differ");
}

struct KeyFile {
  explicit KeyFile(const fs::path& path) {
    g_key_file_load_from_file(file, path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
  }
  ~KeyFile() { g_key_file_free(file); }
  KeyFile(const KeyFile&) = delete;
  KeyFile& operator=(const KeyFile&) = delete;

  std::size_t Look(const std::string& section, const std::string& key) const {
    char* const value = g_key_file_get_string(file, section.c_str(), key.c_str(), nullptr);
    const std::size_t length = std::strlen(value);
    g_free(value);
    return length;
  }

  GKeyFile* file = g_key_file_new();
};

void LoadOurs(State& state) {
  const fs::path path = Input("settings.ini");
  const std::string name = vemra::FromHostPath(path.string());
  auto time = fs::file_time_type::clock::now() - std::chrono::hours(24);
  for (auto _ : state) {
    state.PauseTiming();
    fs::last_write_time(path, time += std::chrono::seconds(1));  // so that it is parsed again
    state.ResumeTiming();
    vemra::INIWorker worker(name, 0);
    const vemra::INIWorker::Batch batch(worker);
    std::string value;
    Compare(state, ReadAll([&](const std::string& section, const std::string& key) {
              return std::size_t(worker.GetString(section, key, value));
            }));
  }
}
BENCHMARK(LoadOurs)->Name("settings-load/ours");

void LoadPeer(State& state) {
  const fs::path path = Input("settings.ini");
  for (auto _ : state) {
    CSimpleIniA file;
    file.LoadFile(path.c_str());
    Compare(state, ReadAll([&](const std::string& section, const std::string& key) {
              return std::strlen(file.GetValue(section.c_str(), key.c_str(), ""));
            }));
  }
}
BENCHMARK(LoadPeer)->Name("settings-load/peer");

// Every key gets another value, and the file is replaced and synced.
void SaveOurs(State& state) {
  const fs::path path = Input("saved-ours.ini");
  fs::copy_file(Input("settings.ini"), path, fs::copy_options::overwrite_existing);
  vemra::INIWorker worker(vemra::FromHostPath(path.string()), 0);
  int round = 0;
  for (auto _ : state) {
    const std::string value = std::to_string(++round);
    vemra::INIWorker::Batch batch(worker);
    ReadAll([&](const std::string& section, const std::string& key) {
      return std::size_t(worker.PutString(section, key, value));
    });
    if (!batch.Commit()) state.SkipWithError("not saved");
  }
}
BENCHMARK(SaveOurs)->Name("settings-save/ours");

void SavePeer(State& state) {
  const fs::path path = Input("saved-peer.ini");
  fs::copy_file(Input("settings.ini"), path, fs::copy_options::overwrite_existing);
  const KeyFile keys(path);
  int round = 0;
  for (auto _ : state) {
    const std::string value = std::to_string(++round);
    ReadAll([&](const std::string& section, const std::string& key) {
      g_key_file_set_string(keys.file, section.c_str(), key.c_str(), value.c_str());
      return std::size_t{1};
    });
    if (!g_key_file_save_to_file(keys.file, path.c_str(), nullptr))
      state.SkipWithError("not saved");
  }
}
BENCHMARK(SavePeer)->Name("settings-save/peer");

void LookOurs(State& state) {
  vemra::CTavoFastFileINI file;
  file.Open(vemra::FromHostPath(Input("settings.ini").string()));
  for (auto _ : state) {
    Compare(state, ReadAll([&](const std::string& section, const std::string& key) {
              return file.GetString(section, key, "").size();
            }));
  }
}
BENCHMARK(LookOurs)->Name("settings-lookup/ours");

void LookBatched(State& state) {
  vemra::INIWorker worker(vemra::FromHostPath(Input("settings.ini").string()), 0);
  const vemra::INIWorker::Batch batch(worker);
  std::string value;
  for (auto _ : state) {
    Compare(state, ReadAll([&](const std::string& section, const std::string& key) {
              return std::size_t(worker.GetString(section, key, value));
            }));
  }
}
BENCHMARK(LookBatched)->Name("settings-batched/ours");

void LookPeer(State& state) {
  const KeyFile keys(Input("settings.ini"));
  for (auto _ : state) {
    Compare(state, ReadAll([&](const std::string& section, const std::string& key) {
              return keys.Look(section, key);
            }));
  }
}
BENCHMARK(LookPeer)->Name("settings-lookup/peer");
BENCHMARK(LookPeer)->Name("settings-batched/peer");

// --- fingerprint ---

const std::string& Text() {
  static const std::string text = ReadWhole(Input("text.bin"));
  return text;
}

const std::vector<std::string>& FiveLetterWords() {
  static const auto words = [] {
    std::vector<std::string> found;
    std::string word;
    for (const char c : Text()) {
      if (std::isalpha(static_cast<unsigned char>(c)) != 0) {
        word += c;
        continue;
      }
      if (word.size() == 5) found.push_back(word);
      word.clear();
      if (found.size() == 100000) break;
    }
    return found;
  }();
  return words;
}

void LongOurs(State& state) {
  const std::string& text = Text();
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        std::int32_t(vemra::signature32(text.data(), std::ptrdiff_t(text.size()))));
  }
}
BENCHMARK(LongOurs)->Name("fingerprint-long/ours");

void LongPeer(State& state) {
  const std::string& text = Text();
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        crc32(0, reinterpret_cast<const Bytef*>(text.data()), uInt(text.size())));
  }
}
BENCHMARK(LongPeer)->Name("fingerprint-long/peer");

void WordsOurs(State& state) {
  for (auto _ : state) {
    for (const std::string& word : FiveLetterWords()) {
      benchmark::DoNotOptimize(
          std::int32_t(vemra::signature32(word.data(), std::ptrdiff_t(word.size()))));
    }
  }
}
BENCHMARK(WordsOurs)->Name("fingerprint-word/ours");

void WordsPeer(State& state) {
  for (auto _ : state) {
    for (const std::string& word : FiveLetterWords()) {
      benchmark::DoNotOptimize(
          crc32(0, reinterpret_cast<const Bytef*>(word.data()), uInt(word.size())));
    }
  }
}
BENCHMARK(WordsPeer)->Name("fingerprint-word/peer");

// --- wildcards ---

template <typename Match>
void MatchPaths(State& state, const char* pattern, Match match) {
  static const std::vector<std::string> paths = ReadLines(Input("paths.txt"));
  std::size_t expected = 0;
  for (const std::string& path : paths) expected += vemra::MatchWildcard(pattern, path) != 0;
  for (auto _ : state) {
    std::size_t matches = 0;
    for (const std::string& path : paths) matches += match(pattern, path) ? 1 : 0;
    if (matches != expected) state.SkipWithError("the matches differ");
  }
}

void WildcardOurs(State& state, const char* pattern) {
  MatchPaths(state, pattern, [](const char* p, const std::string& path) {
    return vemra::MatchWildcard(p, path) != 0;
  });
}
void WildcardPeer(State& state, const char* pattern) {
  MatchPaths(state, pattern, [](const char* p, const std::string& path) {
    return fnmatch(p, path.c_str(), 0) == 0;
  });
}
BENCHMARK_CAPTURE(WildcardOurs, , "*.html")->Name("wildcard-suffix/ours");
BENCHMARK_CAPTURE(WildcardPeer, , "*.html")->Name("wildcard-suffix/peer");
BENCHMARK_CAPTURE(WildcardOurs, , "*a*b*c*")->Name("wildcard-stars/ours");
BENCHMARK_CAPTURE(WildcardPeer, , "*a*b*c*")->Name("wildcard-stars/peer");

const std::string kHardText = std::string(10000, 'a');

void HardOurs(State& state) {
  const std::string pattern = "*" + std::string(100, 'a') + "b";
  for (auto _ : state) {
    if (vemra::MatchWildcard(pattern, kHardText) != 0) state.SkipWithError("must not match");
  }
}
BENCHMARK(HardOurs)->Name("wildcard-hard/ours");

void HardPeer(State& state) {
  RE2::Options options;
  options.set_encoding(RE2::Options::EncodingLatin1);
  options.set_dot_nl(true);
  options.set_never_capture(true);
  const RE2 pattern(".*" + std::string(100, 'a') + "b", options);
  for (auto _ : state) {
    if (RE2::FullMatch(kHardText, pattern)) state.SkipWithError("must not match");
  }
}
BENCHMARK(HardPeer)->Name("wildcard-hard/peer");

// --- reading by lines ---

void LinesOurs(State& state) {
  const std::string path = vemra::FromHostPath(Input("list.txt").string());
  const std::size_t expected = ReadLines(Input("list.txt")).size();
  for (auto _ : state) {
    vemra::CTavoProfileReader reader(path);
    std::size_t lines = 0;
    for (std::string line; reader.ReadLine(line, 1) != 0; ++lines) reader.GotoNextLine();
    if (lines != expected) state.SkipWithError("the lines differ");
  }
}
BENCHMARK(LinesOurs)->Name("profile-lines/ours");

void LinesPeer(State& state) {
  const fs::path path = Input("list.txt");
  const std::size_t expected = ReadLines(path).size();
  for (auto _ : state) {
    std::ifstream file(path);
    std::size_t lines = 0;
    for (std::string line; std::getline(file, line); ++lines) benchmark::DoNotOptimize(line);
    if (lines != expected) state.SkipWithError("the lines differ");
  }
}
BENCHMARK(LinesPeer)->Name("profile-lines/peer");

}  // namespace

BENCHMARK_MAIN();
