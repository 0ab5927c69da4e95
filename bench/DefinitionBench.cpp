// The database definition and, in the same run, what a user would pick instead. The inputs are in
// the folder that VEMRA_BENCH_INPUTS names. A side that gives another answer than the other is an
// error.
#include <benchmark/benchmark.h>
#include <glib.h>

#include <bitset>
#include <boost/dynamic_bitset.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "Support/definition/Definition.h"
#include "Support/foundation/Foundation.h"

namespace {

namespace fs = std::filesystem;
using benchmark::DoNotOptimize;
using benchmark::State;

fs::path Input(const char* name) {
  const char* const folder = std::getenv("VEMRA_BENCH_INPUTS");
  return fs::path(folder == nullptr ? "." : folder) / name;
}

// --- sets of 16,384 bits ---

constexpr std::size_t kBits = vemra::CTavoFixedBitArray::kBits;
using Bitset = std::bitset<kBits>;

// Each bit is set with a chance of one in so many.
template <class Array>
void Fill(Array& array, unsigned oneIn, unsigned seed) {
  std::mt19937 random(seed);
  for (std::size_t i = 0; i < kBits; ++i) {
    if (random() % oneIn != 0) continue;
    if constexpr (requires { array.set(i); }) {
      array.set(i);
    } else {
      array.SetAt(static_cast<std::int32_t>(i), 1);
    }
  }
}

template <class Operation>
void CombineOurs(State& state, Operation operation) {
  vemra::CTavoFixedBitArray a;
  vemra::CTavoFixedBitArray b;
  Fill(a, 2, 1);
  Fill(b, 2, 2);
  for (auto _ : state) {
    operation(a, &b);
    DoNotOptimize(a);
    benchmark::ClobberMemory();
  }
}

template <class Operation>
void CombinePeer(State& state, Operation operation) {
  Bitset a;
  Bitset b;
  Fill(a, 2, 1);
  Fill(b, 2, 2);
  for (auto _ : state) {
    operation(a, b);
    DoNotOptimize(a);
    benchmark::ClobberMemory();
  }
}

void AndOurs(State& state) {
  CombineOurs(state, [](auto& a, const auto* b) { return a & b; });
}
void AndPeer(State& state) {
  CombinePeer(state, [](auto& a, const auto& b) { a &= b; });
}
void OrOurs(State& state) {
  CombineOurs(state, [](auto& a, const auto* b) { return a | b; });
}
void OrPeer(State& state) {
  CombinePeer(state, [](auto& a, const auto& b) { a |= b; });
}
void AndNotOurs(State& state) {
  CombineOurs(state, [](auto& a, const auto* b) { return a - b; });
}
void AndNotPeer(State& state) {
  CombinePeer(state, [](auto& a, const auto& b) { a &= ~b; });
}
BENCHMARK(AndOurs)->Name("bits-and/ours");
BENCHMARK(AndPeer)->Name("bits-and/peer");
BENCHMARK(OrOurs)->Name("bits-or/ours");
BENCHMARK(OrPeer)->Name("bits-or/peer");
BENCHMARK(AndNotOurs)->Name("bits-andnot/ours");
BENCHMARK(AndNotPeer)->Name("bits-andnot/peer");

void CountOurs(State& state) {
  vemra::CTavoFixedBitArray array;
  Fill(array, 2, 1);
  for (auto _ : state) {
    DoNotOptimize(array);
    DoNotOptimize(array.GetTrueCount());
  }
}
void CountPeer(State& state) {
  Bitset array;
  Fill(array, 2, 1);
  for (auto _ : state) {
    DoNotOptimize(array);
    DoNotOptimize(array.count());
  }
}
BENCHMARK(CountOurs)->Name("bits-count/ours");
BENCHMARK(CountPeer)->Name("bits-count/peer");

std::uint64_t ExpectedSum(unsigned oneIn) {
  Bitset array;
  Fill(array, oneIn, 1);
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < kBits; ++i) sum += array[i] ? i : 0;
  return sum;
}

void WalkOurs(State& state, unsigned oneIn) {
  vemra::CTavoFixedBitArray array;
  Fill(array, oneIn, 1);
  const std::uint64_t expected = ExpectedSum(oneIn);
  for (auto _ : state) {
    std::uint64_t sum = 0;
    array.ForEachSetBit([&sum](std::int32_t index) { sum += static_cast<std::uint64_t>(index); });
    if (sum != expected) state.SkipWithError("the bits differ");
  }
}
void WalkPeer(State& state, unsigned oneIn) {
  boost::dynamic_bitset<> array(kBits);
  Fill(array, oneIn, 1);
  const std::uint64_t expected = ExpectedSum(oneIn);
  for (auto _ : state) {
    std::uint64_t sum = 0;
    for (std::size_t i = array.find_first(); i != array.npos; i = array.find_next(i)) sum += i;
    if (sum != expected) state.SkipWithError("the bits differ");
  }
}
BENCHMARK_CAPTURE(WalkOurs, , 2)->Name("bits-walk-2/ours");
BENCHMARK_CAPTURE(WalkPeer, , 2)->Name("bits-walk-2/peer");
BENCHMARK_CAPTURE(WalkOurs, , 64)->Name("bits-walk-64/ours");
BENCHMARK_CAPTURE(WalkPeer, , 64)->Name("bits-walk-64/peer");

// --- a definition of 125 fields, with four patterns and two attributes each in a file beside ---

constexpr int kFields = vemra::kMaxFields;
constexpr int kTags = 4;
constexpr int kAttributes = 2;

// What a program without the library keeps of a field.
struct PlainTag {
  std::string path;
  std::string name;  // of the attribute
  int ignoreParentFields = 0;
  int addTo = 0;
};
struct PlainField {
  std::string name;
  std::string title;
  std::string rules;
  std::string index;
  int charset = 0;
  int parent = 0;
  std::vector<PlainTag> tags;
  std::vector<PlainTag> attributes;
};

class KeyFile {
 public:
  KeyFile() = default;
  explicit KeyFile(const fs::path& path) {
    g_key_file_load_from_file(file_, path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
  }
  ~KeyFile() { g_key_file_free(file_); }
  KeyFile(const KeyFile&) = delete;
  KeyFile& operator=(const KeyFile&) = delete;

  std::string Text(const std::string& group, const std::string& key) const {
    char* const value = g_key_file_get_string(file_, group.c_str(), key.c_str(), nullptr);
    std::string text = value == nullptr ? "" : value;
    g_free(value);
    return text;
  }
  int Number(const std::string& group, const std::string& key) const {
    return g_key_file_get_integer(file_, group.c_str(), key.c_str(), nullptr);
  }
  void Set(const std::string& group, const std::string& key, const std::string& value) {
    g_key_file_set_string(file_, group.c_str(), key.c_str(), value.c_str());
  }
  void Set(const std::string& group, const std::string& key, int value) {
    g_key_file_set_integer(file_, group.c_str(), key.c_str(), value);
  }
  bool Save(const fs::path& path) const {
    return g_key_file_save_to_file(file_, path.c_str(), nullptr) != 0;
  }

 private:
  GKeyFile* file_ = g_key_file_new();
};

std::vector<PlainField> LoadPlain(const fs::path& definitions, const fs::path& markup) {
  const KeyFile fields(definitions);
  const KeyFile tags(markup);
  std::vector<PlainField> loaded(kFields);
  for (int i = 0; i < kFields; ++i) {
    PlainField& field = loaded[static_cast<std::size_t>(i)];
    const std::string group = "FIELD" + std::to_string(i);
    field.name = fields.Text(group, "NAME");
    field.title = fields.Text(group, "TITLE");
    field.rules = fields.Text(group, "FIELDRULES");
    field.index = fields.Text(group, "INDEX");
    field.charset = fields.Number(group, "CHARSET");
    field.parent = fields.Number(group, "Parent Field");
    const std::string markupGroup = "Field" + std::to_string(i);
    field.tags.resize(static_cast<std::size_t>(tags.Number(markupGroup, "Tag Number")));
    int number = 0;
    for (PlainTag& tag : field.tags) {
      const std::string suffix = std::to_string(++number);
      tag.path = tags.Text(markupGroup, "Tag Path " + suffix);
      tag.ignoreParentFields = tags.Number(markupGroup, "Ignore Parent Fields " + suffix);
      tag.addTo = tags.Number(markupGroup, "Add to Tag Field " + suffix);
    }
    field.attributes.resize(static_cast<std::size_t>(tags.Number(markupGroup, "Attribute Number")));
    number = 0;
    for (PlainTag& attribute : field.attributes) {
      const std::string suffix = std::to_string(++number);
      attribute.path = tags.Text(markupGroup, "Attribute Path " + suffix);
      attribute.name = tags.Text(markupGroup, "Attribute Name " + suffix);
      attribute.addTo = tags.Number(markupGroup, "Add to Attribute Field " + suffix);
    }
  }
  return loaded;
}

bool SavePlain(const std::vector<PlainField>& fields, const fs::path& definitions,
               const fs::path& markup) {
  KeyFile fieldFile;
  KeyFile tagFile;
  for (int i = 0; i < kFields; ++i) {
    const PlainField& field = fields[static_cast<std::size_t>(i)];
    const std::string group = "FIELD" + std::to_string(i);
    fieldFile.Set(group, "NAME", field.name);
    fieldFile.Set(group, "TITLE", field.title);
    fieldFile.Set(group, "FIELDRULES", field.rules);
    fieldFile.Set(group, "INDEX", field.index);
    fieldFile.Set(group, "Parent Field", field.parent);
    fieldFile.Set(group, "CHARSET", field.charset);
    const std::string markupGroup = "Field" + std::to_string(i);
    tagFile.Set(markupGroup, "Tag Number", static_cast<int>(field.tags.size()));
    int number = 0;
    for (const PlainTag& tag : field.tags) {
      const std::string suffix = std::to_string(++number);
      tagFile.Set(markupGroup, "Tag Path " + suffix, tag.path);
      tagFile.Set(markupGroup, "Ignore Parent Fields " + suffix, tag.ignoreParentFields);
      tagFile.Set(markupGroup, "Add to Tag Field " + suffix, tag.addTo);
    }
    tagFile.Set(markupGroup, "Attribute Number", static_cast<int>(field.attributes.size()));
    number = 0;
    for (const PlainTag& attribute : field.attributes) {
      const std::string suffix = std::to_string(++number);
      tagFile.Set(markupGroup, "Attribute Path " + suffix, attribute.path);
      tagFile.Set(markupGroup, "Attribute Name " + suffix, attribute.name);
      tagFile.Set(markupGroup, "Add to Attribute Field " + suffix, attribute.addTo);
    }
  }
  return fieldFile.Save(definitions) && tagFile.Save(markup);
}

std::string Shown(const fs::path& path) {
  return vemra::FromHostPath(path.string());
}

void LoadInto(vemra::CTavoFileINI& definitions) {
  definitions.Load(Shown(Input("fields.ini")).c_str());
  definitions.ReadFTD(0, Shown(Input("markup.ftd")), 1);
}

bool AreAllThere(const vemra::CTavoFileINI& definitions) {
  const vemra::CTavoField* last = definitions.GetField(kFields - 1);
  return definitions.GetNumOfFields() == kFields && last != nullptr &&
         last->GetNumberOfTags(0) == kTags && last->GetNumberOfAttributes(0) == kAttributes;
}

void LoadOurs(State& state) {
  const fs::path files[] = {Input("fields.ini"), Input("markup.ftd")};
  auto time = fs::file_time_type::clock::now() - std::chrono::hours(24);
  for (auto _ : state) {
    state.PauseTiming();
    time += std::chrono::seconds(1);
    for (const fs::path& file : files) fs::last_write_time(file, time);  // to be parsed again
    state.ResumeTiming();
    vemra::CTavoFileINI definitions;
    LoadInto(definitions);
    if (!AreAllThere(definitions)) state.SkipWithError("fields or tags are missing");
  }
}
void LoadPeer(State& state) {
  for (auto _ : state) {
    const auto fields = LoadPlain(Input("fields.ini"), Input("markup.ftd"));
    if (fields.back().tags.size() != kTags || fields.back().attributes.size() != kAttributes) {
      state.SkipWithError("fields or tags are missing");
    }
  }
}
BENCHMARK(LoadOurs)->Name("fields-load/ours");
BENCHMARK(LoadPeer)->Name("fields-load/peer");

// Every field gets another title and another first pattern; both files are replaced and synced.
void SaveOurs(State& state) {
  vemra::CTavoFileINI definitions;
  LoadInto(definitions);
  const std::string fieldsPath = Shown(Input("ours.ini"));
  const std::string markupPath = Shown(Input("ours.ftd"));
  int round = 0;
  for (auto _ : state) {
    const std::string text = "round " + std::to_string(++round);
    for (int i = 0; i < kFields; ++i) {
      definitions.GetField(i)->SetTitle(text);
      definitions.GetField(i)->SetTagAt(0, 0, text);
    }
    if (definitions.Save(fieldsPath.c_str()) == 0 || definitions.SaveFTD(0, markupPath) == 0) {
      state.SkipWithError("not saved");
    }
  }
  definitions.Load(fieldsPath.c_str());
  definitions.ReadFTD(0, markupPath, 1);
  if (!AreAllThere(definitions)) state.SkipWithError("not all was saved");
}
void SavePeer(State& state) {
  auto fields = LoadPlain(Input("fields.ini"), Input("markup.ftd"));
  int round = 0;
  for (auto _ : state) {
    const std::string text = "round " + std::to_string(++round);
    for (PlainField& field : fields) {
      field.title = text;
      field.tags[0].path = text;
    }
    if (!SavePlain(fields, Input("peer.ini"), Input("peer.ftd"))) state.SkipWithError("not saved");
  }
}
BENCHMARK(SaveOurs)->Name("fields-save/ours");
BENCHMARK(SavePeer)->Name("fields-save/peer");

void CheckFields(State& state) {
  vemra::CTavoFileINI definitions;
  LoadInto(definitions);
  const std::string path = "<html><body><section7><h1>";
  vemra::CTavoFieldList expected;
  for (int i = 0; i < kFields; ++i) {
    if (definitions.GetField(i)->IsFieldOn(0, path) != 0) expected.Set(i);
  }
  if (expected.IsEmpty() != 0) state.SkipWithError("a path of no field");
  vemra::CTavoFieldList fields;
  for (auto _ : state) {
    DoNotOptimize(definitions.CheckFields(fields, path));
  }
  if (fields != expected) state.SkipWithError("the fields differ");
}
BENCHMARK(CheckFields)->Name("check-fields/ours");

// --- a tree of 50,000 files, two patterns ---

int RunFind(const char* rest) {
  const std::string command = "exec find " + Input("tree").string() +
                              " -type f '(' -iname '*.htm' -o -iname '*.txt' ')' " + rest;
  return std::system(command.c_str());
}

std::size_t CountFound() {
  const fs::path listing = Input("found.txt");
  RunFind(("> " + listing.string()).c_str());
  std::FILE* const file = std::fopen(listing.c_str(), "r");
  std::size_t lines = 0;
  for (int byte = std::fgetc(file); byte != EOF; byte = std::fgetc(file)) lines += byte == '\n';
  std::fclose(file);
  return lines;
}

void ScanOurs(State& state) {
  const std::string root = Shown(Input("tree"));
  const std::size_t expected = CountFound();
  for (auto _ : state) {
    vemra::CDirScan scan;
    scan.Scan(root, "*.htm;*.txt", 1);
    std::size_t files = 0;
    for (std::string path; scan.FindNextFile(path) != 0;) ++files;
    if (files != expected || files == 0) state.SkipWithError("the files differ");
  }
}
// What it finds goes nowhere, which suits it best.
void ScanPeer(State& state) {
  for (auto _ : state) {
    if (RunFind("> /dev/null") != 0) state.SkipWithError("find failed");
  }
}
BENCHMARK(ScanOurs)->Name("dirscan/ours");
BENCHMARK(ScanPeer)->Name("dirscan/peer");

}  // namespace

BENCHMARK_MAIN();
