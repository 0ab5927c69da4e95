#include "Support/services/dde/DDEFormat.h"

#include <iterator>

#include "Support/platform/Dde.h"

namespace vemra {

std::string GetDDEFormatName(std::uint16_t format) {
  static constexpr const char* kStandard[] = {"TEXT",    "BITMAP",  "METAFILEPICT", "SYLK",
                                              "DIF",     "TIFF",    "OEMTEXT",      "DIB",
                                              "PALETTE", "PENDATA", "RIFF",         "WAVE"};
  if (format >= 1 && format <= std::size(kStandard)) return kStandard[format - 1];
  return platform::GetDdeManager().GetFormatName(format);
}

std::uint16_t RegisterDDEFormat(const std::string& name) {
  return platform::GetDdeManager().RegisterFormat(name);
}

}  // namespace vemra
