#include <algorithm>
#include <string>
#include <vector>

#include "Support/text/LangPackReader.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

class PackFile : public LangPackReader {
 public:
  explicit PackFile(std::string_view bytes) {
    const InputFile file(bytes);
    Check(Read(file.Path(), tables) == 1, "a pack that is there is read");
  }

  LangPackTables tables;
  std::vector<std::size_t> badLines;  // from 1

 protected:
  void OnBadLine(const std::string&, std::uint32_t number) override { badLines.push_back(number); }
};

std::vector<std::string> SplitLines(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    lines.emplace_back(bytes.substr(0, size));
    bytes.remove_prefix(size);
  }
  return lines;
}

bool Same(const LangPackTables& a, const LangPackTables& b) {
  return a.flags == b.flags && a.sort == b.sort && a.toIndex == b.toIndex &&
         a.andWord == b.andWord && a.orWord == b.orWord && a.notWord == b.notWord;
}

// A line that is reported says nothing, and one that is not is understood.
void Run(std::string_view bytes) {
  const PackFile pack(bytes);
  std::vector<std::string> lines = SplitLines(bytes);
  const auto isLong = [](const std::string& line) { return line.size() > 255; };
  if (std::any_of(lines.begin(), lines.end(), isLong)) return;  // read as several lines
  std::string good;
  std::size_t before = 0;
  for (const std::size_t number : pack.badLines) {
    Check(number > before && number <= lines.size(), "bad lines are numbered in order");
    lines[number - 1] = "\n";
    before = number;
  }
  for (const std::string& line : lines) good += line;
  const PackFile without(good);
  Check(without.badLines.empty(), "the other lines are good");
  Check(Same(pack.tables, without.tables), "bad lines say nothing");
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
