#include "programs/check/Report.h"

#include <algorithm>
#include <cstdio>

#include "Support/foundation/HostPath.h"
#include "programs/formats/Utf8.h"

namespace vemra::check {
namespace {

constexpr std::size_t kMaxQuoted = 80;  // bytes of a text that is shown

void AppendEscaped(unsigned char c, std::string& out) {
  char escaped[5];
  std::snprintf(escaped, sizeof escaped, "\\x%02X", c);
  out += escaped;
}

}  // namespace

void FileReport::Add(int line, Severity severity, std::string text) {
  std::size_t& count = severity == Severity::kError ? errors_ : warnings_;
  if (count == kMaxFindings) return;
  ++count;
  findings_.push_back({line, severity, std::move(text)});
}

std::vector<Finding> FileReport::GetFindings() const {
  std::vector<Finding> sorted = findings_;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
  if (!TakesErrors() || !TakesWarnings()) {
    sorted.push_back({sorted.back().line, Severity::kWarning,
                      "there may be more that is wrong; it is not shown"});
  }
  return sorted;
}

FileReport& Report::Open(const std::string& path) {
  const auto known = std::find_if(files_.begin(), files_.end(),
                                  [&](const FileReport& file) { return file.GetPath() == path; });
  return known != files_.end() ? *known : files_.emplace_back(path);
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (std::string_view rest = text.substr(0, kMaxQuoted); !rest.empty();) {
    const std::size_t length = DecodeUtf8(rest).length;
    const auto c = static_cast<unsigned char>(rest.front());
    if (length == 0 || c < ' ' || c == 0x7f) {
      AppendEscaped(c, quoted);
    } else {
      quoted += rest.substr(0, length);
    }
    rest.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return quoted + (text.size() > kMaxQuoted ? "...\"" : "\"");
}

std::string Bracketed(std::string_view title) {
  std::string text = Quoted(title);
  text.front() = '[';
  text.back() = ']';
  return text;
}

std::string ShowPath(const std::string& path) {
  const std::string hostPath = ToHostPath(path);
  return hostPath.empty() ? Quoted(path) : hostPath;
}

}  // namespace vemra::check
