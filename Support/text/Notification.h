#pragma once

#include "Support/Export.h"

namespace vemra {

// Receives the messages of a parser.
class SUPPORT_API TavoNotification {
 public:
  virtual ~TavoNotification() = default;
  // message is NUL-terminated and a loan for the call; value is always 1.
  virtual void Notify(const char* message, int value) = 0;
};

}  // namespace vemra
