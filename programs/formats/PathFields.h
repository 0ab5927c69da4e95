#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Support/definition/FieldList.h"
#include "programs/formats/ElementPath.h"

namespace vemra {

class CTavoFileINI;

// The fields that the text at an element path belongs to. The paths of a page are few and long: the
// last ones are known by a hash that is made as elements open, instead of one of the whole path.
class PathFields {
 public:
  // definitions is a loan.
  explicit PathFields(CTavoFileINI& definitions) : definitions_(definitions) {}

  // As the definitions are now; the general field where they name none. Valid until the next call.
  const CTavoFieldList& Find(const ElementPath& path);

 private:
  struct Known {
    bool isSet = false;
    std::string path;
    CTavoFieldList fields;
  };

  static constexpr std::size_t kSlots = 512;

  void ForgetWhenChanged();

  CTavoFileINI& definitions_;
  int fileType_ = 0;  // what is known is of this file type and revision
  std::uint64_t revision_ = 0;
  std::array<Known, kSlots> known_;
};

}  // namespace vemra
