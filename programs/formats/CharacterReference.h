#pragma once

#include <cstddef>
#include <string_view>

namespace vemra {

// Where a character reference stands: in an attribute's value, one without its semicolon is text
// when more of a name or "=" follows, as in a link's "?a=1&copy=2".
enum class ReferencePlace { kText, kAttribute };

// A character reference, "&eacute;", "&#233;" or "&#xE9;". length is the number of its bytes, or 0
// when what begins with the ampersand is none.
struct CharacterReference {
  char32_t code;
  std::size_t length;
};

// The reference at the start of text, which begins with "&". Names are those of HTML 4 and "apos";
// those of Latin-1 and the characters of markup do without their semicolon, as in browsers. The
// numbers 128 to 159 mean windows-1252; a number that is no character gives U+FFFD.
CharacterReference ReadCharacterReference(std::string_view text, ReferencePlace place);

}  // namespace vemra
