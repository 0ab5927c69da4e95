#include <cstdio>
#include <string>
#include <vector>

#include "Support/foundation/Ascii.h"
#include "Support/foundation/ProfileReader.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

// The rules of a line, told plainly: pieces of up to 255 bytes, cut at a NUL, without line ends;
// blank lines and comments do not count.
std::vector<std::string> PlainLines(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    std::size_t size = bytes.substr(0, 255).find('\n');
    size = size == std::string_view::npos ? std::min<std::size_t>(255, bytes.size()) : size + 1;
    std::string line(bytes.substr(0, size));
    bytes.remove_prefix(size);
    line = line.c_str();
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    std::size_t at = 0;
    while (at < line.size() && IsAsciiSpace(static_cast<unsigned char>(line[at]))) ++at;
    if (at < line.size() && line[at] != ';') lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> ReadAll(CTavoProfileReader& reader) {
  std::vector<std::string> lines;
  for (std::string line; reader.ReadLine(line, 1) != 0; reader.GotoNextLine())
    lines.push_back(line);
  return lines;
}

// Whatever consumes a line must have found it pending as it says.
void ReadByKeys(CTavoProfileReader& reader, const std::vector<std::string>& lines) {
  std::size_t at = 0;
  std::string text;
  for (; reader.ReadLine(text, 0) != 0; ++at) {
    Check(at < lines.size() && text == lines[at], "the pending line");
    std::int32_t number = -7;
    if (reader.ReadSectionTitle("A") != 0) {
      Check(text.starts_with("[A]"), "a title");
    } else if (reader.ReadInt("k", number) != 0) {
      Check(text.starts_with("k=") && std::strtol(text.c_str() + 2, nullptr, 10) == number,
            "a number");
    } else if (Check(number == -7, "a failed read stores nothing"); reader.ReadString("k", text)) {
      Check("k=" + text == lines[at], "a string");
    } else {
      reader.GotoNextLine();
    }
  }
  Check(at == lines.size(), "the number of lines");
}

void Run(std::string_view bytes) {
  const InputFile file(bytes);
  const std::vector<std::string> lines = PlainLines(bytes);
  CTavoProfileReader byPath(file.Path());
  Check(ReadAll(byPath) == lines, "lines of a path");
  std::FILE* const stream = std::fopen(file.HostPath().c_str(), "rb");
  CTavoProfileReader byStream(stream);
  Check(ReadAll(byStream) == lines, "lines of a stream");
  std::fclose(stream);
  CTavoProfileReader byKeys(file.Path());
  ReadByKeys(byKeys, lines);
  CTavoProfileReader bySections(file.Path());
  for (std::string text; bySections.GotoNextSection() != 0; bySections.GotoNextLine()) {
    Check(bySections.ReadLine(text, 1) != 0 && text[0] == '[', "a section");
  }
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
