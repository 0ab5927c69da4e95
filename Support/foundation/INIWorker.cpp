#include "Support/foundation/INIWorker.h"

#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "Support/foundation/Dates.h"
#include "Support/foundation/File.h"
#include "Support/foundation/INIException.h"
#include "Support/platform/PrivateProfile.h"

namespace vemra {

namespace {

constexpr char kMissing[] = "NONE-000";
constexpr std::size_t kNumberLimit = 18;
constexpr std::size_t kBooleanLimit = 8;
constexpr std::size_t kStringLimit = 256;

std::string SizeKey(const std::string& key) {
  return key + " Size";
}

// Items count from 1, like every other numbered key of the settings files.
std::string ItemKey(const std::string& key, std::size_t index) {
  return key + " Item " + std::to_string(index + 1);
}

}  // namespace

// The file as it was when the batch opened with the edits since then, and what there is to store:
// those edits and what they start from.
struct INIWorker::Batch::State {
  std::string path;
  platform::ProfileDraft draft;
  bool stored = false;  // since then the draft is not what was loaded, edited
  std::vector<platform::ProfileEdit> edits;
  platform::ProfileBase base = platform::ProfileBase::kCurrent;

  explicit State(const std::string& settingsPath)
      : path(settingsPath), draft(platform::LoadProfile(settingsPath)) {}

  const platform::ProfileText& GetText() const { return draft.text; }

  void Add(platform::ProfileEdit edit) {
    draft.changed |= draft.text.Apply(edit);
    draft.text.Normalize();
    edits.push_back(std::move(edit));
  }

  void StartFromEmpty() {
    draft.text = platform::ProfileText();
    edits.clear();
    base = platform::ProfileBase::kEmpty;
  }

  bool Store() {
    if (edits.empty() && base == platform::ProfileBase::kCurrent) return true;
    if (!platform::EditProfile(edits, path, base, stored ? nullptr : &draft)) return false;
    stored = true;
    edits.clear();
    base = platform::ProfileBase::kCurrent;
    return true;
  }
};

INIWorker::INIWorker(const std::string& path, int throwOnFailure)
    : path_(path), defaultText_(kMissing), throwOnFailure_(throwOnFailure) {}

INIWorker::INIWorker(const INIWorker& other)
    : path_(other.path_),
      section(other.section),
      defaultText_(other.defaultText_),
      throwOnFailure_(other.throwOnFailure_) {}

INIWorker& INIWorker::operator=(const INIWorker& other) {
  path_ = other.path_;
  section = other.section;
  defaultText_ = other.defaultText_;
  throwOnFailure_ = other.throwOnFailure_;
  return *this;
}

INIWorker::~INIWorker() = default;

void INIWorker::SetDefault() {
  defaultText_ = kMissing;
}

std::string INIWorker::Read(const std::string& sectionName, const std::string& key,
                            const std::string& fallback, std::size_t limit, bool mayThrow) const {
  std::string text;
  if (batch_ != nullptr) {
    const auto value = batch_->state_->GetText().Find(sectionName, key);
    text = (value ? *value : platform::ProfileText::CleanFallback(fallback)).substr(0, limit);
  } else {
    text = platform::ReadProfileString(sectionName, key, fallback, limit, path_);
  }
  if (text.empty() && mayThrow && throwOnFailure_ != 0) throw TavoINIException(path_);
  return text;
}

int INIWorker::Write(const std::string& sectionName, const std::string& key,
                     const std::string& value) {
  if (batch_ != nullptr) {
    batch_->state_->Add({sectionName, key, value});
    return 1;
  }
  if (platform::WriteProfile(sectionName.c_str(), key.c_str(), value.c_str(), path_)) return 1;
  if (throwOnFailure_ != 0) throw TavoINIException(path_);
  return 0;
}

int INIWorker::PutNum(const std::string& key, int value) {
  return PutNum(section, key, value);
}

int INIWorker::PutNum(const std::string& sectionName, const std::string& key, int value) {
  return Write(sectionName, key, std::to_string(value));
}

int INIWorker::GetNum(const std::string& key) {
  return GetNum(section, key);
}

int INIWorker::GetNum(const std::string& sectionName, const std::string& key) {
  return std::atoi(Read(sectionName, key, "", kNumberLimit, true).c_str());
}

int INIWorker::GetNum(const std::string& key, int& value) {
  return GetNum(section, key, value);
}

int INIWorker::GetNum(const std::string& sectionName, const std::string& key, int& value) {
  const std::string text = Read(sectionName, key, "", kNumberLimit, true);
  if (text.empty()) return 0;
  value = std::atoi(text.c_str());
  return 1;
}

int INIWorker::GetNum(const std::string& key, int& value, int fallback) {
  return GetNum(section, key, value, fallback);
}

int INIWorker::GetNum(const std::string& sectionName, const std::string& key, int& value,
                      int fallback) {
  const std::string text = Read(sectionName, key, "", kNumberLimit, false);
  value = text.empty() ? fallback : std::atoi(text.c_str());
  return text.empty() ? 0 : 1;
}

int INIWorker::PutString(const std::string& key, const std::string& value) {
  return PutString(section, key, value);
}

int INIWorker::PutString(const std::string& sectionName, const std::string& key,
                         const std::string& value) {
  return Write(sectionName, key, value);
}

int INIWorker::ReadText(const std::string& sectionName, const std::string& key, std::string& value,
                        std::size_t limit) {
  value = Read(sectionName, key, defaultText_, limit, true);
  if (IsDefString(value) != 0) value.clear();
  return int(value.size());
}

int INIWorker::GetString(const std::string& key, std::string& value) {
  return GetString(section, key, value);
}

int INIWorker::GetString(const std::string& sectionName, const std::string& key,
                         std::string& value) {
  return ReadText(sectionName, key, value, kStringLimit);
}

int INIWorker::GetWholeString(const std::string& key, std::string& value) {
  return GetWholeString(section, key, value);
}

int INIWorker::GetWholeString(const std::string& sectionName, const std::string& key,
                              std::string& value) {
  return ReadText(sectionName, key, value, platform::kNoLimit);
}

int INIWorker::GetStringWithDefault(const std::string& key, std::string& value,
                                    const std::string& fallback) {
  return GetStringWithDefault(section, key, value, fallback);
}

int INIWorker::GetStringWithDefault(const std::string& sectionName, const std::string& key,
                                    std::string& value, const std::string& fallback) {
  const std::string text = Read(sectionName, key, defaultText_, kStringLimit, false);
  const bool missing = IsDefString(text) != 0;
  value = missing ? fallback : text;
  return missing ? 0 : int(text.size());
}

int INIWorker::PutBoolean(const std::string& key, int value) {
  return PutBoolean(section, key, value);
}

int INIWorker::PutBoolean(const std::string& sectionName, const std::string& key, int value) {
  return Write(sectionName, key, value != 0 ? "YES" : "NO");
}

namespace {

int ParseBoolean(const std::string& text, int& value) {
  if (text != "YES" && text != "NO") return 0;
  value = text == "YES" ? 1 : 0;
  return 1;
}

int ParseTime(const std::string& text, DateTime& value) {
  LocalTime local;
  if (std::sscanf(text.c_str(), "%d:%d:%d %d/%d/%d", &local.hour, &local.minute, &local.second,
                  &local.day, &local.month, &local.year) != 6)
    return 0;
  value = DateTime::FromLocal(local);
  return 1;
}

int ParseTimeSpan(const std::string& text, TimeSpan& value) {
  if (text.empty()) return 0;
  value = TimeSpan(std::atoll(text.c_str()));
  return 1;
}

}  // namespace

int INIWorker::GetBoolean(const std::string& key, int& value) {
  return GetBoolean(section, key, value);
}

int INIWorker::GetBoolean(const std::string& sectionName, const std::string& key, int& value) {
  return ParseBoolean(Read(sectionName, key, "", kBooleanLimit, true), value);
}

int INIWorker::GetBoolean(const std::string& key, int& value, int fallback) {
  return GetBoolean(section, key, value, fallback);
}

int INIWorker::GetBoolean(const std::string& sectionName, const std::string& key, int& value,
                          int fallback) {
  value = fallback;
  return ParseBoolean(Read(sectionName, key, "", kBooleanLimit, false), value);
}

int INIWorker::PutColor(const std::string& key, std::uint32_t value) {
  return PutColor(section, key, value);
}

int INIWorker::PutColor(const std::string& sectionName, const std::string& key,
                        std::uint32_t value) {
  return Write(sectionName, key, std::to_string(value));
}

int INIWorker::GetColor(const std::string& key, std::uint32_t& value) {
  return GetColor(section, key, value);
}

int INIWorker::GetColor(const std::string& sectionName, const std::string& key,
                        std::uint32_t& value) {
  const std::string text = Read(sectionName, key, "", kNumberLimit, true);
  std::uint32_t color = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, color);
  if (parsed.ec != std::errc() || parsed.ptr != end) return 0;
  value = color;
  return 1;
}

int INIWorker::PutStringArray(const std::string& key, const std::vector<std::string>& values) {
  return PutStringArray(section, key, values);
}

int INIWorker::PutStringArray(const std::string& sectionName, const std::string& key,
                              const std::vector<std::string>& values) {
  Batch batch(*this);
  PutNum(sectionName, SizeKey(key), int(values.size()));
  for (std::size_t i = 0; i < values.size(); i++) {
    PutString(sectionName, ItemKey(key, i), values[i]);
  }
  return batch.Commit();
}

int INIWorker::GetStringArray(const std::string& key, std::vector<std::string>& values) {
  return GetStringArray(section, key, values);
}

int INIWorker::GetStringArray(const std::string& sectionName, const std::string& key,
                              std::vector<std::string>& values) {
  int size = 0;
  if (GetNum(sectionName, SizeKey(key), size) == 0 || size < 0) return 0;
  std::vector<std::string> read;
  for (std::size_t i = 0; i < std::size_t(size); i++) {
    read.push_back(Read(sectionName, ItemKey(key, i), defaultText_, kStringLimit, false));
    if (IsDefString(read.back()) != 0) return 0;
  }
  values = std::move(read);
  return 1;
}

int INIWorker::PutTime(const std::string& key, DateTime value) {
  return PutTime(section, key, value);
}

int INIWorker::PutTime(const std::string& sectionName, const std::string& key, DateTime value) {
  return Write(sectionName, key, FormatStoredTime(value));
}

int INIWorker::GetTime(const std::string& key, DateTime& value) {
  return GetTime(section, key, value);
}

int INIWorker::GetTime(const std::string& sectionName, const std::string& key, DateTime& value) {
  return ParseTime(Read(sectionName, key, "", kStringLimit, true), value);
}

int INIWorker::GetTime(const std::string& key, DateTime& value, DateTime fallback) {
  return GetTime(section, key, value, fallback);
}

int INIWorker::GetTime(const std::string& sectionName, const std::string& key, DateTime& value,
                       DateTime fallback) {
  value = fallback;
  return ParseTime(Read(sectionName, key, "", kStringLimit, false), value);
}

int INIWorker::PutTimeSpan(const std::string& key, TimeSpan value) {
  return PutTimeSpan(section, key, value);
}

int INIWorker::PutTimeSpan(const std::string& sectionName, const std::string& key, TimeSpan value) {
  return Write(sectionName, key, std::to_string(value.GetTotalSeconds()));
}

int INIWorker::GetTimeSpan(const std::string& key, TimeSpan& value) {
  return GetTimeSpan(section, key, value);
}

int INIWorker::GetTimeSpan(const std::string& sectionName, const std::string& key,
                           TimeSpan& value) {
  return ParseTimeSpan(Read(sectionName, key, "", kNumberLimit, true), value);
}

int INIWorker::GetTimeSpan(const std::string& key, TimeSpan& value, TimeSpan fallback) {
  return GetTimeSpan(section, key, value, fallback);
}

int INIWorker::GetTimeSpan(const std::string& sectionName, const std::string& key, TimeSpan& value,
                           TimeSpan fallback) {
  value = fallback;
  return ParseTimeSpan(Read(sectionName, key, "", kNumberLimit, false), value);
}

int INIWorker::DeleteContents() {
  if (path_.empty()) return 0;
  // In a batch the old contents stay until the new ones take their place.
  const auto creation =
      batch_ == nullptr ? TavoFile::Creation::kCreateTruncate : TavoFile::Creation::kOpenOrCreate;
  try {
    TavoFile(path_, TavoFile::Access::kReadWrite, creation);
  } catch (const std::system_error&) {
    return 0;
  }
  if (batch_ != nullptr) batch_->state_->StartFromEmpty();
  return 1;
}

INIWorker::Batch::Batch(INIWorker& worker) : worker_(worker) {
  if (worker.batch_ != nullptr) return;
  state_ = std::make_unique<State>(worker.path_);
  worker.batch_ = this;
}

INIWorker::Batch::~Batch() {
  if (!state_) return;
  worker_.batch_ = nullptr;
  state_->Store();
}

int INIWorker::Batch::Commit() {
  if (!state_ || state_->Store()) return 1;
  if (worker_.throwOnFailure_ != 0) throw TavoINIException(state_->path);
  return 0;
}

}  // namespace vemra
