#include "Support/services/AccessFile.h"

#include <algorithm>
#include <system_error>

#include "Support/foundation/Errors.h"
#include "Support/platform/Clock.h"
#include "Support/platform/Errors.h"
#include "Support/platform/Files.h"
#include "Support/services/AccessLines.h"

namespace vemra {
namespace {

constexpr int kAttempts = 5;
constexpr std::uint32_t kWaitMilliseconds = 1000;

std::string ReadAll(TavoFile& file) {
  std::string text(static_cast<std::size_t>(file.GetLength()), '\0');
  file.Seek(0, TavoFile::Origin::kBegin);
  text.resize(file.Read(text.data(), text.size()));
  return text;
}

void WriteAt(TavoFile& file, std::size_t position, std::string_view text) {
  file.Seek(static_cast<std::int64_t>(position), TavoFile::Origin::kBegin);
  file.Write(text.data(), text.size());
}

std::string Describe(const std::string& path, const std::system_error& error) {
  return path + ": " + error.code().message() + ".";
}

}  // namespace

int AccessFile::Open(std::string* error) {
  return Open(TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenOrCreate, error);
}

int AccessFile::OpenToLook(std::string* error) {
  return Open(TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting, error);
}

int AccessFile::Open(TavoFile::Access access, TavoFile::Creation creation, std::string* error) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    try {
      file_.Open(path_, access, creation, TavoFile::Share::kDenyWrite);
      return 1;
    } catch (const std::system_error& failure) {
      if (failure.code().value() != static_cast<int>(platform::kSharingViolation)) {
        *error = Describe(path_, failure);
        return 0;
      }
    }
    platform::SleepMilliseconds(kWaitMilliseconds);
  }
  return 0;
}

int AccessFile::ReadLines(const std::function<int(const char* line)>& take, std::string* error) {
  try {
    text_ = ReadAll(file_);
  } catch (const std::system_error& failure) {
    *error = Describe(path_, failure);
    return 0;
  }
  AccessLines lines(text_);
  const char* line = nullptr;
  for (int number = 1; lines.Next(&line); ++number) {
    const std::string_view text(line);
    if (text.empty() || text.front() == ';') continue;
    const char* const fault = text.back() != '\n' ? "too long" : take(line) == 0 ? "invalid" : "";
    if (*fault == '\0') continue;
    *error = "Line " + std::to_string(number) + " is " + fault + ".";
    return 0;
  }
  return 1;
}

int AccessFile::Write(const std::vector<AccessEntry>& entries, std::string* error) {
  std::string text;
  for (const AccessEntry& entry : entries) {
    std::string line = FormatAccessLine(entry);
    line.replace(line.size() - 1, 1, platform::kLineEnd);
    AddAccessLine(line, text);
  }
  try {
    Replace(text);
    return 1;
  } catch (const std::system_error& failure) {
    *error = Describe(path_, failure);
  }
  try {
    WriteAt(file_, 0, text_);
    file_.SetLength(static_cast<std::int64_t>(text_.size()));
  } catch (const std::system_error&) {
    return 0;  // already told
  }
  return 0;
}

// The old text may be longer: comments cover what is left of it until it is cut off. A text of one
// page is written at once. Of a longer one, a copy behind the old text holds everybody while the
// front is a mixture of old and new pages.
void AccessFile::Replace(const std::string& text) {
  std::size_t end = std::max(text.size(), text_.size());
  if (end > kAccessPage) {
    end = (end / kAccessPage + 1) * kAccessPage;
    std::string both = text_;
    FillAccessText(end, both);
    both += text;
    WriteAt(file_, text_.size(), std::string_view(both).substr(text_.size()));
  }
  std::string front = text;
  FillAccessText(end, front);
  WriteAt(file_, 0, front);
  file_.SetLength(static_cast<std::int64_t>(text.size()));
  text_ = text;
}

}  // namespace vemra
