#include "Support/services/AccessEntry.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "Support/foundation/Ascii.h"
#include "Support/foundation/Dates.h"

namespace vemra {
namespace {

constexpr std::size_t kMaxName = 16;
// Far beyond any date, and far from where the arithmetic of dates overflows.
constexpr std::int64_t kMaxDatePart = 999999999;

// Returns -1 for what is no digit of the base.
int DigitOf(char c, int base) {
  const unsigned char lower = ToAsciiLower(static_cast<unsigned char>(c));
  const int digit = IsAsciiDigit(lower) ? lower - '0' : IsAsciiAlpha(lower) ? lower - 'a' + 10 : 99;
  return digit < base ? digit : -1;
}

// Reads a line from left to right as scanf would. After the first failure every step fails.
class LineScanner {
 public:
  explicit LineScanner(const char* line) : at_(line) {}

  bool HasFailed() const { return failed_; }

  void Name(std::string& name) {
    SkipSpace();
    name.clear();
    while (!failed_ && *at_ != '\0' && !IsSpace() && name.size() < kMaxName) name += *at_++;
    Require(!name.empty());
  }

  void Literal(std::string_view text) {
    for (const char c : text) {
      Require(!failed_ && *at_ == c);
      if (!failed_) ++at_;
    }
  }

  std::uint32_t Hexadecimal() {
    const bool isNegative = Sign();
    if (at_[0] == '0' && (at_[1] == 'x' || at_[1] == 'X') && DigitOf(at_[2], 16) >= 0) at_ += 2;
    std::uint32_t value = 0;
    Require(DigitOf(*at_, 16) >= 0);
    for (; DigitOf(*at_, 16) >= 0; ++at_) {
      value = value * 16 + static_cast<std::uint32_t>(DigitOf(*at_, 16));
    }
    return isNegative ? 0U - value : value;
  }

  int Decimal() {
    const bool isNegative = Sign();
    std::int64_t value = 0;
    Require(DigitOf(*at_, 10) >= 0);
    for (; DigitOf(*at_, 10) >= 0; ++at_) {
      value = std::min(value * 10 + DigitOf(*at_, 10), kMaxDatePart);
    }
    return static_cast<int>(isNegative ? -value : value);
  }

  DateTime Time() {
    LocalTime local;
    local.hour = Decimal();
    Literal(":");
    local.minute = Decimal();
    Literal(":");
    local.second = Decimal();
    local.day = Decimal();
    Literal("/");
    local.month = Decimal();
    Literal("/");
    local.year = Decimal();
    return failed_ ? DateTime() : DateTime::FromLocal(local);
  }

  void SkipSpace() {
    while (IsSpace()) ++at_;
  }

 private:
  bool IsSpace() const { return IsAsciiSpace(static_cast<unsigned char>(*at_)); }
  void Require(bool condition) { failed_ = failed_ || !condition; }

  bool Sign() {
    SkipSpace();
    const bool isNegative = *at_ == '-';
    if (isNegative || *at_ == '+') ++at_;
    return isNegative;
  }

  const char* at_;
  bool failed_ = false;
};

}  // namespace

std::string FormatAccessLine(const AccessEntry& entry) {
  char line[400];
  // Kept: the thread id is padded with blanks on the right, not with zeros.
  std::snprintf(line, sizeof line, "%-16s %-8lX %s expires %s\n", entry.name.c_str(),
                static_cast<unsigned long>(entry.threadId),
                FormatStoredTime(entry.lastUpdate).c_str(),
                FormatStoredTime(entry.expires).c_str());
  return line;
}

int ParseAccessLine(const char* line, AccessEntry& entry) {
  LineScanner scanner(line);
  scanner.Name(entry.name);
  entry.threadId = scanner.Hexadecimal();
  entry.lastUpdate = scanner.Time();
  scanner.SkipSpace();
  scanner.Literal("expires");
  entry.expires = scanner.Time();
  entry.clockTime = entry.lastUpdate;
  return scanner.HasFailed() ? 0 : 1;
}

}  // namespace vemra
