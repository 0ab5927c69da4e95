#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "Support/definition/FieldList.h"
#include "programs/formats/ElementPath.h"

namespace vemra {

class CTavoFileINI;

// The fields that the text at an element path belongs to. The paths of a page are few and long: the
// last ones are known by a hash that is made as elements open, instead of one of the whole path.
class PathFields {
 public:
  // What is known is forgotten: the definitions, or their file type, may have changed.
  void Forget();
  // By the definitions, or the general field where they name none. Valid until the next call.
  const CTavoFieldList& Find(CTavoFileINI& definitions, const ElementPath& path);

 private:
  struct Known {
    bool isSet = false;
    std::string path;
    CTavoFieldList fields;
  };

  static constexpr std::size_t kSlots = 256;

  std::array<Known, kSlots> known_;
};

}  // namespace vemra
