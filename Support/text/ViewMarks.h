#pragma once

#include <string>
#include <string_view>

namespace vemra {

// How links and hits travel in the text that is written into a view: a NUL, which no document's
// text holds, and a letter. As ordinary characters they keep their place through every queue and
// field buffer of an output. Write each mark whole, in one string; a TavoViewOutput takes them out
// of the text again.
namespace viewmarks {

inline constexpr char kIntroducer = '\0';  // also ends a target
inline constexpr char kLinkStart = 'L';    // followed by the target and its end
inline constexpr char kLinkEnd = 'l';
inline constexpr char kHitStart = 'H';
inline constexpr char kHitEnd = 'h';

inline std::string Make(char letter) {
  return {kIntroducer, letter};
}

// A NUL ends target.
inline std::string MakeLinkStart(std::string_view target) {
  std::string mark = Make(kLinkStart);
  mark.append(target.substr(0, target.find(kIntroducer)));
  mark += kIntroducer;
  return mark;
}

}  // namespace viewmarks
}  // namespace vemra
