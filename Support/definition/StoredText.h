#pragma once

#include <string>

#include "Support/foundation/Ascii.h"
#include "Support/foundation/INIWorker.h"

namespace vemra {

// What to store so that a settings file gives the text back: reading takes white space around a
// value away and then one pair of enclosing quotes, so a text that would lose any gets one more
// pair. A text with a line break cannot be kept.
inline std::string ProtectText(const std::string& text) {
  if (text.empty()) return text;
  const auto isLost = [](unsigned char c) { return IsAsciiSpace(c) || c == '\x1a'; };
  const bool isQuoted = text.size() > 1 && (text.front() == '"' || text.front() == '\'') &&
                        text.front() == text.back();
  const bool isCut = isQuoted || isLost(text.front()) || isLost(text.back());
  return isCut ? '"' + text + '"' : text;
}

// PutString that reading undoes exactly.
inline int PutText(INIWorker& writer, const std::string& key, const std::string& text) {
  return writer.PutString(key, ProtectText(text));
}
inline int PutText(INIWorker& writer, const std::string& section, const std::string& key,
                   const std::string& text) {
  return writer.PutString(section, key, ProtectText(text));
}

}  // namespace vemra
