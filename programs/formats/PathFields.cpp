#include "programs/formats/PathFields.h"

#include "Support/definition/FileINI.h"

namespace vemra {

const CTavoFieldList& PathFields::Find(const ElementPath& path) {
  ForgetWhenChanged();
  Known& known = known_[path.GetHash() % kSlots];
  if (known.isSet && known.path == path.GetText()) return known.fields;
  known.isSet = true;
  known.path = path.GetText();
  definitions_.CheckFields(known.fields, known.path);
  if (known.fields.IsEmpty()) known.fields.Set(0);
  return known.fields;
}

void PathFields::ForgetWhenChanged() {
  const int fileType = definitions_.GetCurrentFTD();
  const std::uint64_t revision = definitions_.GetRevision();
  if (fileType == fileType_ && revision == revision_) return;
  fileType_ = fileType;
  revision_ = revision;
  for (Known& known : known_) known.isSet = false;
}

}  // namespace vemra
