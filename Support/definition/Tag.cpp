#include "Support/definition/Tag.h"

#include "Support/definition/StoredText.h"
#include "Support/foundation/INIWorker.h"

namespace vemra {

CTavoTag::~CTavoTag() = default;

int CTavoTag::Save(INIWorker& writer, int item) const {
  const std::string number = std::to_string(item);
  return PutText(writer, "Tag Path " + number, path_) != 0 &&
                 writer.PutNum("Ignore Parent Fields " + number, ignoreParentFields_) != 0 &&
                 writer.PutNum("Add to Tag Field " + number, addToTagField_) != 0
             ? 1
             : 0;
}

int CTavoTag::Load(INIWorker& reader, int item) {
  const std::string number = std::to_string(item);
  reader.GetStringWithDefault("Tag Path " + number, path_, "");
  reader.GetNum("Ignore Parent Fields " + number, ignoreParentFields_, 0);
  reader.GetNum("Add to Tag Field " + number, addToTagField_, 0);
  return 1;
}

int CTavoTag::CheckPath(std::string_view path) const {
  std::string_view pattern = path_;
  bool floating = false;
  for (;;) {
    while (!pattern.empty() && pattern.front() == '*') {
      floating = true;
      pattern.remove_prefix(1);
    }
    if (pattern.empty()) return floating || path.empty() ? 1 : 0;

    const std::string_view segment = pattern.substr(0, pattern.find('*'));
    if (floating) {
      const std::size_t found = path.find(segment);
      if (found == std::string_view::npos) return 0;
      path.remove_prefix(found);
    } else if (!path.starts_with(segment)) {
      return 0;
    }
    path.remove_prefix(segment.size());
    pattern.remove_prefix(segment.size());
    if (pattern.empty()) return path.empty() ? 1 : 0;
  }
}

int CTavoTag::IsTagOn(std::string_view path) const {
  if (CheckPath(path) == 0) return 0;
  if (ignoreParentFields_ == 0) return 1;
  const std::size_t element = path.rfind('<');
  if (element == std::string_view::npos) return 1;
  const std::string_view parent = path.substr(0, element == 0 ? 0 : element - 1);
  return CheckPath(parent) == 0 ? 1 : 0;
}

}  // namespace vemra
