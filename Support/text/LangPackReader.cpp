#include "Support/text/LangPackReader.h"

#include <algorithm>
#include <cstdint>

#include "Support/foundation/Ascii.h"
#include "Support/foundation/ProfileReader.h"

namespace vemra {

namespace {

struct Range {
  int first = 0;
  int last = 0;

  int GetLength() const { return last - first + 1; }
};

struct Number {
  bool negative = false;
  std::int64_t magnitude = 0;  // of a longer number than any table holds, something as large
};

// The parsers below advance at over what they read; when they fail, at is of no use.

bool ReadNumber(const char*& at, Number& number) {
  constexpr std::int64_t kLarge = INT32_MAX;
  while (IsAsciiSpace(static_cast<unsigned char>(*at))) ++at;
  number.negative = *at == '-';
  if (*at == '-' || *at == '+') ++at;
  if (!IsAsciiDigit(static_cast<unsigned char>(*at))) return false;
  for (; IsAsciiDigit(static_cast<unsigned char>(*at)); ++at) {
    number.magnitude = std::min(number.magnitude * 10 + (*at - '0'), kLarge);
  }
  return true;
}

bool ReadByteValue(const char*& at, int& byte) {
  if (at[0] == '\'') {
    if (at[1] == '\0' || at[2] != '\'') return false;
    byte = static_cast<unsigned char>(at[1]);
    at += 3;
    return true;
  }
  Number number;
  if (!ReadNumber(at, number) || number.negative) return false;
  if (number.magnitude < 1 || number.magnitude > 255) return false;
  byte = static_cast<int>(number.magnitude);
  return true;
}

bool ReadRange(const char*& at, Range& range) {
  if (!ReadByteValue(at, range.first)) return false;
  range.last = range.first;
  // A "-" right before "=" is the operator of a weight, the range being complete.
  if (at[0] != '-' || at[1] == '=') return true;
  ++at;
  return ReadByteValue(at, range.last);
}

bool ReadFlagsLine(const char* line, LangPackTables& tables) {
  Range range;
  if (!ReadRange(line, range) || *line != '=') return false;
  int flags = 0;
  for (++line; *line != '\0'; ++line) {
    if (*line == 'A') flags += LangPackTables::kLetter;
    if (*line == 'D') flags += LangPackTables::kDigit;
  }
  for (int byte = range.first; byte <= range.last; ++byte) {
    tables.flags[static_cast<std::size_t>(byte)] = static_cast<std::uint8_t>(flags);
  }
  return true;
}

bool ReadSortLine(const char* line, LangPackTables& tables) {
  Range range;
  if (!ReadRange(line, range)) return false;
  const char operation = *line;
  if (operation == '+' || operation == '-' || operation == '~') ++line;
  if (*line != '=') return false;
  ++line;
  Number number;
  if (!ReadNumber(line, number)) return false;
  const std::int64_t value = number.negative ? -number.magnitude : number.magnitude;
  for (int byte = range.first; byte <= range.last; ++byte) {
    std::int16_t& weight = tables.sort[static_cast<std::size_t>(byte)];
    std::int64_t result = value;
    if (operation == '+') result = weight + value;
    if (operation == '-') result = weight - value;
    if (operation == '~') result = value - weight;
    weight = static_cast<std::int16_t>(result);  // wraps
  }
  return true;
}

bool ReadIndexLine(const char* line, LangPackTables& tables) {
  Range from;
  Range to;
  if (!ReadRange(line, from) || *line != '=') return false;
  ++line;
  if (!ReadRange(line, to) || *line != '\0') return false;
  if (from.first > from.last || from.GetLength() != to.GetLength()) return false;
  const int shift = to.first - from.first;
  for (int byte = from.first; byte <= from.last; ++byte) {
    tables.toIndex[static_cast<std::size_t>(byte)] = static_cast<std::uint8_t>(byte + shift);
  }
  return true;
}

// The next line of the section, which stays pending; 0 at the section's end.
int LookAtLine(CTavoProfileReader& file, std::string& line) {
  return file.ReadLine(line, 1) && (line.empty() || line[0] != '[');
}

}  // namespace

int LangPackReader::Read(const std::string& path, LangPackTables& tables) {
  CTavoProfileReader file(path);
  if (!file.IsOpen()) return 0;
  while (file.GotoNextSection()) {
    if (file.ReadSectionTitle("Flags")) {
      ReadLines(file, ReadFlagsLine, tables);
    } else if (file.ReadSectionTitle("Sort")) {
      ReadLines(file, ReadSortLine, tables);
    } else if (file.ReadSectionTitle("Index")) {
      ReadLines(file, ReadIndexLine, tables);
    } else if (file.ReadSectionTitle("Query Language")) {
      ReadQueryWords(file, tables);
    } else {
      file.GotoNextLine();
    }
  }
  return 1;
}

void LangPackReader::OnBadLine(const std::string& /*line*/, std::uint32_t /*number*/) {}

void LangPackReader::ReadLines(CTavoProfileReader& file, LineReader read, LangPackTables& tables) {
  std::string line;
  while (LookAtLine(file, line)) {
    if (!read(line.c_str(), tables)) OnBadLine(line, file.GetLineNumber());
    file.GotoNextLine();
  }
}

void LangPackReader::ReadQueryWords(CTavoProfileReader& file, LangPackTables& tables) {
  std::string line;
  while (LookAtLine(file, line)) {
    if (!file.ReadString("And", tables.andWord) && !file.ReadString("Or", tables.orWord) &&
        !file.ReadString("Not", tables.notWord)) {
      OnBadLine(line, file.GetLineNumber());
      file.GotoNextLine();
    }
  }
}

}  // namespace vemra
