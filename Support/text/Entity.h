#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Support/Export.h"

namespace vemra {

// Converts between characters and the character entities of HTML text. Six characters have names:
// apos, quot, amp, lt, gt, and nbsp, which stands for the ordinary space (32), so that it reads
// back as one. The names of Latin-1 (HTML 4.0, codes 161 to 255) are only read. The tables are
// fixed: any number of objects may work at once, each used by one thread.
class SUPPORT_API CTavoEntity {
 public:
  // "&name;" for the six, else "&#%d;" with the character as a signed number: byte 233 gives
  // "&#-23;", which readers of stored output rely on.
  std::string TranslateEntity(char c) const;

  // Replaces every one of the six that text holds, one character after the other in the order
  // " & ' < > space. A quote's own ampersand is therefore replaced too where the text also holds
  // an ampersand: &amp;quot;. The order is part of the output format.
  void TranslateAllEntities(std::string& text);
  // The same with numbers, "&#%d;".
  void TranslateAllEscEntities(std::string& text);

  // What an entity name (without "&" and ";") stands for: the character of the six names; the
  // decimal code as text for a Latin-1 name ("eacute" gives "233", not the character: the caller
  // knows the code page); the character of #65 or #x41, low 8 bits; else empty.
  std::string IsEntity(std::string_view name) const;

  // The steps of the above. NUL and the empty string stand for "none".
  char IsDefEntity(std::string_view name) const;           // one of the six names
  char IsCharEntity(std::string_view name) const;          // #digits or #xdigits
  std::string MakeDefEntity(std::string_view name) const;  // "&name;"
  std::string MakeDefEntity(char c) const;                 // for one of the six
  std::string MakeCharEntity(char c) const;                // "&#%d;"

  // The characters found by the last translation, in the order above, one string each.
  const std::vector<std::string>& GetFound() const { return found_; }

 protected:
  // Fills the array with those of the six that text holds. Returns whether there are any.
  int HasEntity(const std::string& text);

 private:
  class EntityTables;

  void ReplaceFound(std::string& text, const EntityTables& tables);

  std::vector<std::string> found_;
};

}  // namespace vemra
