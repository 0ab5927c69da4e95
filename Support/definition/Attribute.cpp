#include "Support/definition/Attribute.h"

#include "Support/definition/StoredText.h"
#include "Support/foundation/INIWorker.h"

namespace vemra {

CTavoAttribute::~CTavoAttribute() = default;

int CTavoAttribute::Save(INIWorker& writer, int item) const {
  const std::string number = std::to_string(item);
  return PutText(writer, "Attribute Path " + number, GetTagPath()) != 0 &&
                 PutText(writer, "Attribute Name " + number, name_) != 0 &&
                 writer.PutNum("Add to Attribute Field " + number, addToAttributeField_) != 0
             ? 1
             : 0;
}

int CTavoAttribute::Load(INIWorker& reader, int item) {
  const std::string number = std::to_string(item);
  std::string path;
  reader.GetStringWithDefault("Attribute Path " + number, path, "");
  SetTagPath(path);
  reader.GetStringWithDefault("Attribute Name " + number, name_, "");
  reader.GetNum("Add to Attribute Field " + number, addToAttributeField_, 0);
  return 1;
}

int CTavoAttribute::IsAttributeOn(std::string_view path, std::string_view name) const {
  return name == name_ && IsTagOn(path) != 0 ? 1 : 0;
}

}  // namespace vemra
