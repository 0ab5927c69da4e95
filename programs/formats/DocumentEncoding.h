#pragma once

#include <string>

#include "programs/formats/CodePage.h"

namespace vemra {

// What may declare the encoding of a document besides a byte order mark.
enum class Declaration {
  kNone,
  kMarkup,  // an XML declaration, or a meta element within the first 4096 bytes
};

// The text of a document in the given code page. Its encoding is the first of: the byte order mark
// (UTF-8, UTF-16), the declared one, UTF-8 when all of it is valid UTF-8, windows-1252. A label of
// Latin-1 or ASCII means windows-1252, as in browsers; UTF-16 declared in readable ASCII means
// UTF-8; a label that is not known counts as none.
std::string DecodeDocument(std::string bytes, Declaration declaration, const CodePage& codePage);

}  // namespace vemra
