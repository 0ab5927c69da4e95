#include "Support/definition/Path2URL.h"

#include <algorithm>

#include "Support/definition/LowerCase.h"
#include "Support/definition/StoredCount.h"
#include "Support/definition/StoredText.h"
#include "Support/foundation/INIWorker.h"
#include "Support/foundation/Strings.h"

namespace vemra {
namespace {

constexpr char kSection[] = "Path2URL";

// Whether the key is present, be its value empty or not. A missing one reads back as a text that
// no value can be, since a stored value has no control character at its start.
bool ReadPresent(INIWorker& reader, const std::string& key, std::string& value) {
  static const std::string kMissing = "\x01missing";
  reader.GetStringWithDefault(key, value, kMissing);
  return value != kMissing;
}

}  // namespace

int TavoPath2URL::Load(INIWorker& reader, int keep) {
  if (keep == 0) RemoveAll();
  reader.SetSection(kSection);
  const int count = ReadStoredCount(reader, "Count");
  for (int i = 1; i <= count; ++i) {
    std::string path;
    std::string url;
    const bool hasPath = ReadPresent(reader, "Path" + std::to_string(i), path);
    const bool hasURL = ReadPresent(reader, "URL" + std::to_string(i), url);
    if (hasPath && hasURL && !path.empty()) Add(path, url);
  }
  return 1;
}

int TavoPath2URL::Save(INIWorker& writer) const {
  writer.SetSection(kSection);
  if (writer.PutNum("Count", GetCount()) == 0) return 0;
  int number = 0;
  for (const Pair& pair : pairs_) {
    const std::string suffix = std::to_string(++number);
    if (PutText(writer, "Path" + suffix, pair.path) == 0 ||
        PutText(writer, "URL" + suffix, pair.url) == 0) {
      return 0;
    }
  }
  return 1;
}

void TavoPath2URL::Add(const std::string& path, const std::string& url) {
  pairs_.push_back({path, url, ToLowerCase(path)});
}

void TavoPath2URL::RemoveAll() {
  pairs_.clear();
}

void TavoPath2URL::Sort() {
  std::stable_sort(pairs_.begin(), pairs_.end(),
                   [](const Pair& a, const Pair& b) { return a.sortKey < b.sortKey; });
}

int TavoPath2URL::FindPath(const std::string& path) const {
  const auto above =
      std::upper_bound(pairs_.begin(), pairs_.end(), ToLowerCase(path),
                       [](const std::string& key, const Pair& pair) { return key < pair.sortKey; });
  return static_cast<int>(above - pairs_.begin()) - 1;
}

std::string TavoPath2URL::TranslatePath(const std::string& path) {
  const int index = FindPath(path);
  if (index >= 0) {
    const Pair& pair = pairs_[static_cast<std::size_t>(index)];
    if (ToLowerCase(path).starts_with(pair.sortKey)) {
      std::string url = pair.url + path.substr(pair.path.size());
      return ReplaceChar(url, '\\', '/');
    }
  }
  untranslated_ = 1;
  return path;
}

}  // namespace vemra
