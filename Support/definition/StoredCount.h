#pragma once

#include <algorithm>
#include <string>

#include "Support/foundation/INIWorker.h"

namespace vemra {

// The count of numbered items that a settings file holds under the key of the worker's current
// section: 0 when it is missing or negative. Cut at 65,536, far above any real definition, so that
// a damaged count costs neither time nor memory.
inline int ReadStoredCount(INIWorker& reader, const std::string& key) {
  int count = 0;
  reader.GetNum(key, count, 0);
  return std::clamp(count, 0, 65536);
}

}  // namespace vemra
