#include "programs/commands/PackCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <numeric>
#include <ostream>
#include <vector>

#include "Support/foundation/HostPath.h"
#include "Support/text/LangPackReader.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/HostPaths.h"
#include "programs/commands/Languages.h"
#include "programs/formats/CodePage.h"
#include "programs/formats/Utf8.h"

namespace vemra::commands {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kCellWidth = 5;    // columns of the table
constexpr std::size_t kOrderWidth = 80;  // columns of the list of letters

constexpr std::string_view kDigits = "0123456789ABCDEF";

struct BadLine {
  std::uint32_t number;
  std::string text;
};

class PackFile : public LangPackReader {
 public:
  explicit PackFile(const std::string& path)
      : path_(path), codePage_(CodePage::OfPackFile(PathFromPerson(path))) {
    if (Read(PathFromPerson(path), tables_) == 0) throw CommandError(path + ": cannot be read");
  }

  const std::string& GetPath() const { return path_; }
  const LangPackTables& GetTables() const { return tables_; }
  const std::vector<BadLine>& GetBadLines() const { return badLines_; }
  int GetCodePage() const { return codePage_.GetNumber(); }
  std::string ToUtf8(const std::string& bytes) const { return codePage_.ToUtf8(bytes); }

  int Flags(int byte) const { return tables_.flags[static_cast<std::size_t>(byte)]; }
  int Folded(int byte) const { return tables_.toIndex[static_cast<std::size_t>(byte)]; }
  int Weight(int byte) const { return tables_.sort[static_cast<std::size_t>(byte)]; }
  bool IsWordByte(int byte) const { return (Flags(byte) & LangPackTables::kWordCharacter) != 0; }

  // A byte for people: its character, and its number where that cannot be seen.
  std::string Show(int byte) const {
    const char32_t c = codePage_.ToCharacter(static_cast<unsigned char>(byte));
    if (c <= ' ' || c == 0x7F || c == 0xFFFD) {
      return {'\\', kDigits[std::size_t(byte) >> 4], kDigits[std::size_t(byte) & 0xF]};
    }
    std::string text;
    if (StandsOnAnother(c)) AppendUtf8(kCircle, text);
    AppendUtf8(c, text);
    return text;
  }

 protected:
  void OnBadLine(const std::string& line, std::uint32_t number) override {
    badLines_.push_back({number, line});
  }

 private:
  static constexpr char32_t kCircle = 0x25CC;  // what a loose mark is shown on

  static bool StandsOnAnother(char32_t c) {
    return (c >= 0x0300 && c <= 0x036F) || (c >= 0x0591 && c <= 0x05C7) ||
           (c >= 0x064B && c <= 0x065F);
  }

  std::string path_;
  const CodePage& codePage_;
  LangPackTables tables_;
  std::vector<BadLine> badLines_;
};

// Characters in a UTF-8 text, each of which takes one column.
std::size_t Width(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string Cell(const PackFile& pack, int byte) {
  if (!pack.IsWordByte(byte))
    return pack.Folded(byte) == byte ? "." : ".>" + pack.Show(pack.Folded(byte));
  std::string text = pack.Show(byte);
  if ((pack.Flags(byte) & LangPackTables::kLetter) == 0) text += '#';
  if (pack.Folded(byte) != byte) text += '>' + pack.Show(pack.Folded(byte));
  return text;
}

void PrintTable(const PackFile& pack, std::ostream& out) {
  const auto print = [&out](std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  };
  const auto pad = [](const std::string& cell) {
    return ' ' + cell + std::string(kCellWidth - std::min(kCellWidth, Width(cell)), ' ');
  };
  std::string line = "  ";
  for (const char digit : kDigits) line += pad(std::string(1, digit));
  print(line);
  for (std::size_t row = 0; row < kDigits.size(); ++row) {
    line = {kDigits[row], ' '};
    for (int column = 0; column < 16; ++column) line += pad(Cell(pack, int(16 * row) + column));
    print(line);
  }
  out << "\na letter, 5# digit, a>b folded to b, \\41 by number, . no part of a word\n";
}

std::vector<int> WordBytesInOrder(const PackFile& pack) {
  std::vector<int> bytes(256);
  std::iota(bytes.begin(), bytes.end(), 0);
  std::erase_if(bytes, [&pack](int byte) { return !pack.IsWordByte(byte); });
  std::stable_sort(bytes.begin(), bytes.end(),
                   [&pack](int a, int b) { return pack.Weight(a) < pack.Weight(b); });
  return bytes;
}

void PrintOrder(const PackFile& pack, std::ostream& out) {
  std::string line = "Order:";
  int before = -1;
  for (const int byte : WordBytesInOrder(pack)) {
    const bool isEqual = before >= 0 && pack.Weight(before) == pack.Weight(byte);
    if (!isEqual && Width(line) >= kOrderWidth) {
      out << line << '\n';
      line = "      ";
    }
    line += (isEqual ? "=" : " ") + pack.Show(byte);
    before = byte;
  }
  out << line << '\n';
}

void PrintText(const std::string& name, const PackFile& pack, std::ostream& out) {
  const LangPackTables& tables = pack.GetTables();
  out << name << ": " << pack.GetPath() << ", code page " << pack.GetCodePage() << "\n\n";
  PrintTable(pack, out);
  PrintOrder(pack, out);
  out << "Query words: " << pack.ToUtf8(tables.andWord) << ", " << pack.ToUtf8(tables.orWord)
      << ", " << pack.ToUtf8(tables.notWord) << '\n';
}

void PrintJson(const std::string& name, const PackFile& pack, std::ostream& out) {
  const LangPackTables& tables = pack.GetTables();
  Json bytes = Json::array();
  for (int byte = 0; byte < 256; ++byte) {
    bytes.push_back({{"byte", byte},
                     {"flags", pack.Flags(byte)},
                     {"index", pack.Folded(byte)},
                     {"sort", pack.Weight(byte)}});
  }
  Json bad = Json::array();
  for (const BadLine& line : pack.GetBadLines())
    bad.push_back({{"line", line.number}, {"text", line.text}});
  const Json document = {{"name", name},
                         {"path", pack.GetPath()},
                         {"codePage", pack.GetCodePage()},
                         {"and", pack.ToUtf8(tables.andWord)},
                         {"or", pack.ToUtf8(tables.orWord)},
                         {"not", pack.ToUtf8(tables.notWord)},
                         {"bytes", std::move(bytes)},
                         {"badLines", std::move(bad)}};
  out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

std::string FindFile(const std::string& pack) {
  std::error_code error;
  if (std::filesystem::is_regular_file(pack, error)) return pack;
  std::string file = FindPackFile(pack);
  if (!file.empty()) return file;
  std::string known;
  for (const std::string& language : ListLanguages()) {
    if (language != kBuiltInLanguage) known += ' ' + language;
  }
  throw CommandError(pack + ": is neither a file nor a language; there are:" + known);
}

}  // namespace

int RunPack(const std::string& pack, bool json, Console& console) {
  const PackFile file(FindFile(pack));
  const std::string name = std::filesystem::path(file.GetPath()).stem().string();
  if (json) {
    PrintJson(name, file, console.out);
  } else {
    PrintText(name, file, console.out);
  }
  for (const BadLine& line : file.GetBadLines()) {
    console.err << file.GetPath() << ':' << line.number
                << ": cannot be read and is skipped: " << line.text << '\n';
  }
  return file.GetBadLines().empty() ? kDone : kUsage;
}

void AddPackCommand(CLI::App& program, Console& console, int& exitCode) {
  struct Options {
    std::string pack;
    bool json = false;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      program.add_subcommand("pack", "Show what a language pack makes of the 256 bytes");
  command->add_option("PACK", options->pack, "A language's name or a pack file")->required();
  command->add_flag("--json", options->json, "Print one JSON document");
  command->callback([options, &console, &exitCode] {
    exitCode = RunPack(options->pack, options->json, console);
  });
}

}  // namespace vemra::commands
