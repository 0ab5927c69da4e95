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

std::string FormatStoredTime(DateTime time) {
  const LocalTime local = time.GetLocal();
  char text[80];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d %02d/%02d/%04d", local.hour, local.minute,
                local.second, local.day, local.month, local.year);
  return text;
}

}  // namespace vemra
