#include "Support/foundation/Strings.h"

#include <algorithm>
#include <cstring>

#include "Support/foundation/Ascii.h"

namespace vemra {
namespace {

// Moves text past its first length characters and past the separator that follows them.
std::string TakeItem(const char*& text, std::size_t length) {
  std::string item(text, length);
  text += length;
  if (*text != '\0') ++text;
  return item;
}

}  // namespace

std::string QuoteString(const std::string& s, const char* specials) {
  return s.find_first_of(specials) == std::string::npos ? s : QuoteString(s, '"');
}

std::string QuoteString(const std::string& s, char quote) {
  return QuoteString(s, quote, quote);
}

std::string QuoteString(const std::string& s, char open, char close) {
  std::string quoted;
  quoted.reserve(s.size() + 2);
  quoted += open;
  quoted += s;
  quoted += close;
  return quoted;
}

std::string StripQuotes(const std::string& s, char quote) {
  if (s.size() < 2 || s.front() != quote || s.back() != quote) return s;
  return s.substr(1, s.size() - 2);
}

std::string ReadFileName(const char*& text) {
  const bool isQuoted = *text == '"';
  const char* start = text + (isQuoted ? 1 : 0);
  const char* const end = std::strchr(start, isQuoted ? '"' : ',');
  if (isQuoted && end == nullptr) return "";
  std::string item =
      TakeItem(start, end == nullptr ? std::strlen(start) : static_cast<std::size_t>(end - start));
  text = start;
  if (*text == ',') ++text;
  return item;
}

int ReverseFind(const std::string& s, const std::string& sub) {
  const std::size_t found = s.rfind(sub);
  return found == std::string::npos ? -1 : static_cast<int>(found);
}

void TruncateString(std::string& s, int n) {
  const auto length = static_cast<std::size_t>(std::max(n, 0));
  if (s.size() > length) s.resize(length);
}

std::string& ReplaceChar(std::string& s, char from, char to) {
  std::replace(s.begin(), s.end(), from, to);
  return s;
}

std::string& ReplaceOneOfChars(std::string& s, const char* set, char to) {
  for (std::size_t i = s.find_first_of(set); i != std::string::npos;
       i = s.find_first_of(set, i + 1)) {
    s[i] = to;
  }
  return s;
}

void SmartStrncopy(std::string& dest, const std::string& src, int n) {
  if (n <= 0) return;
  const std::size_t limit = std::min(static_cast<std::size_t>(n), src.size());
  std::string folded;
  folded.reserve(limit);
  bool isInRun = false;
  for (const char c : src) {
    if (folded.size() == limit) break;
    const bool isSpace = IsAsciiSpace(static_cast<unsigned char>(c));
    if (!isSpace || !isInRun) folded += isSpace ? ' ' : c;
    isInRun = isSpace;
  }
  dest = std::move(folded);
}

std::string NumToCString(std::int32_t number) {
  return std::to_string(number);
}

}  // namespace vemra
