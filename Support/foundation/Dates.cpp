#include "Support/foundation/Dates.h"

#include <cstdio>

namespace vemra {

void GetDateString(DateTime time, std::string& out) {
  const LocalTime local = time.GetLocal();
  char text[64];
  std::snprintf(text, sizeof text, "%02d/%02d/%d", local.month, local.day, local.year);
  out = text;
}

void GetDateTimeString(DateTime time, std::string& out) {
  const LocalTime local = time.GetLocal();
  char text[32];
  std::snprintf(text, sizeof text, "  %02d:%02d", local.hour, local.minute);
  GetDateString(time, out);
  out += text;
}

}  // namespace vemra
