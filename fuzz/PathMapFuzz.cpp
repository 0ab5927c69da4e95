#include <string>

#include "Support/definition/LowerCase.h"
#include "Support/definition/Path2URL.h"
#include "Support/foundation/INIWorker.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

// The rule of a look-up, told plainly.
int PlainFind(const TavoPath2URL& map, const std::string& path) {
  int found = -1;
  for (int i = 0; i < map.GetCount(); ++i) {
    if (ToLowerCase(map.GetPath(i)) <= ToLowerCase(path)) found = i;
  }
  return found;
}

void CheckLookUp(TavoPath2URL& map, const std::string& path) {
  const int index = map.FindPath(path);
  Check(index == PlainFind(map, path), "the pair of a path");
  const bool isMapped =
      index >= 0 && ToLowerCase(path).starts_with(ToLowerCase(map.GetPath(index)));
  const std::string url = map.TranslatePath(path);
  if (isMapped) {
    const std::size_t rest = path.size() - map.GetPath(index).size();
    Check(url.size() == map.GetURL(index).size() + rest, "the length of a URL");
    Check(url.find('\\') == std::string::npos, "the slashes of a URL");
  } else {
    Check(url == path && map.IsUntranslated() != 0, "a path that is not mapped");
  }
}

void Run(std::string_view bytes) {
  const InputFile input(bytes);
  TavoPath2URL map;
  CheckStable(input.Path(), [&](const std::string& from, const std::string& to) {
    INIWorker reader(from);
    const INIWorker::Batch snapshot(reader);
    map.Load(reader);
    INIWorker writer(to);
    Check(map.Save(writer) != 0, "saving");
  });
  map.Sort();
  if (map.GetCount() > 100) return;  // the plain rule takes long
  for (int i = 0; i < map.GetCount(); ++i) {
    for (const char* rest : {"", "\\x", "0", "\xFF"}) CheckLookUp(map, map.GetPath(i) + rest);
    CheckLookUp(map, map.GetPath(i).substr(1));
  }
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
