#include "Support/services/dde/DDECountedObject.h"

namespace vemra {

int CDDECountedObject::Release() {
  const int left = --holders_;
  if (left <= 0) delete this;
  return left;
}

}  // namespace vemra
