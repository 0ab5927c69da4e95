#include "programs/formats/PathFields.h"

#include "Support/definition/FileINI.h"

namespace vemra {

void PathFields::Forget() {
  for (Known& known : known_) known.isSet = false;
}

const CTavoFieldList& PathFields::Find(CTavoFileINI& definitions, const ElementPath& path) {
  Known& known = known_[path.GetHash() % kSlots];
  if (known.isSet && known.path == path.GetText()) return known.fields;
  known.isSet = true;
  known.path = path.GetText();
  definitions.CheckFields(known.fields, known.path);
  if (known.fields.IsEmpty()) known.fields.Set(0);
  return known.fields;
}

}  // namespace vemra
