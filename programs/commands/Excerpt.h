#pragma once

#include <string>
#include <vector>

#include "programs/commands/Database.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Search.h"
#include "programs/formats/HitStyle.h"

namespace vemra::commands {

// The words around the first hit of a document, which is read for it: at most kExcerptWords, on one
// line, in the style, in UTF-8. Empty when the document is no longer there.
inline constexpr int kExcerptWords = 30;
std::string MakeExcerpt(FormatWrapper& wrapper, const engine::TextRecord& text,
                        std::vector<engine::Hit> hits, const HitStyle& style);

// For programs: a stretch of the excerpt, and whether it is a hit.
struct ExcerptPiece {
  std::string text;
  bool isHit = false;
};
std::vector<ExcerptPiece> MakeExcerptPieces(FormatWrapper& wrapper, const engine::TextRecord& text,
                                            std::vector<engine::Hit> hits);

// The title of a text for people, in UTF-8: the file's name when it has none.
std::string TitleOf(const engine::TextRecord& text, const CodePage& codePage);

}  // namespace vemra::commands
