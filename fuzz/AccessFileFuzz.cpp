#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "Support/platform/Clock.h"
#include "Support/platform/ComputerName.h"
#include "Support/services/DBAccess.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

constexpr std::int64_t kNow = 1800000000;

// Numbers of so many digits are out of scanf's hands.
bool HasLongNumber(const std::string& line) {
  std::size_t digits = 0;
  for (const char c : line) {
    digits = std::isxdigit(static_cast<unsigned char>(c)) != 0 ? digits + 1 : 0;
    if (digits > 8) return true;
  }
  return false;
}

// What scanf makes of a line.
bool PlainParse(const std::string& line, AccessEntry& entry) {
  char name[17] = "";
  unsigned thread = 0;
  LocalTime last;
  LocalTime end;
  const int fields =
      std::sscanf(line.c_str(), "%16s %X %d:%d:%d %d/%d/%d expires %d:%d:%d %d/%d/%d", name,
                  &thread, &last.hour, &last.minute, &last.second, &last.day, &last.month,
                  &last.year, &end.hour, &end.minute, &end.second, &end.day, &end.month, &end.year);
  if (fields != 14) return false;
  entry = {DateTime(), DateTime::FromLocal(last), DateTime::FromLocal(end), thread, name};
  return true;
}

void CheckLine(const std::string& line) {
  if (HasLongNumber(line)) return;
  AccessEntry read;
  AccessEntry plain;
  const bool isValid = ParseAccessLine(line.c_str(), read) != 0;
  Check(isValid == PlainParse(line, plain), "whether a line is valid");
  if (!isValid) return;
  Check(read.name == plain.name && read.threadId == plain.threadId, "who holds access");
  Check(read.lastUpdate == plain.lastUpdate && read.expires == plain.expires, "a time");
}

// The error of a file, told plainly; empty when it can be read.
std::string PlainError(std::string text) {
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.erase(at, 1);
  for (int number = 1; !text.empty(); ++number) {
    std::string line = text.substr(0, std::min<std::size_t>(text.find('\n'), 98) + 1);
    text.erase(0, line.size());
    line.resize(std::min(line.size(), line.find('\0')));
    if (line.empty() || line.front() == ';') continue;
    const std::string start = "Line " + std::to_string(number) + " is ";
    if (line.back() != '\n') return start + "too long.";
    CheckLine(line);
    AccessEntry entry;
    if (ParseAccessLine(line.c_str(), entry) == 0) return start + "invalid.";
  }
  return "";
}

void Run(std::string_view bytes) {
  const platform::SetClock clock(kNow);
  const platform::SetComputerName computer("HERE");
  const InputFile file(bytes);
  const std::string error = PlainError(std::string(bytes));
  TavoDBAccess access(file.Path());
  const int result = access.GetIndexingAccess(TimeSpan(60));
  if (!error.empty()) {
    Check(result == 0 && !access.WasRefused() && access.GetErrorText() == error, "an error");
    Check(file.Read() == bytes, "a file that cannot be read is left alone");
    return;
  }
  Check(result != 0 || access.WasRefused(), "a file that can be read");
  // What was written is read again as the same holders, by one who has not seen them before.
  TavoDBAccess other(file.Path());
  Check(other.ReleaseSearchAccess() != 0, "a file that was written");
  Check(other.GetHolders().size() <= access.GetHolders().size(), "holders");
  const std::string once = file.Read();
  Check(other.ReleaseSearchAccess() != 0 && file.Read() == once, "a file that stays as it is");
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
