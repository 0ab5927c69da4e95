#pragma once

#include <string>
#include <vector>

#include "programs/commands/Database.h"
#include "programs/engine/IndexDatabase.h"
#include "programs/engine/Search.h"

namespace vemra::commands {

// Which words of a document stand for it in a list of results.
enum class SummaryKind {
  kHits,   // those around the first hit
  kStart,  // its first ones, without hits
};

// A stretch of a summary, in UTF-8, and whether it is a hit.
struct SummaryPiece {
  std::string text;
  bool isHit = false;
};

// At most kSummaryWords words of the document, which is read for it, on one line. Empty when the
// document is no longer there.
inline constexpr int kSummaryWords = 30;
std::vector<SummaryPiece> MakeSummary(FormatWrapper& wrapper, const engine::TextRecord& text,
                                      std::vector<engine::Hit> hits, SummaryKind kind);

// The title of a text for people, in UTF-8: the file's name when it has none.
std::string TitleOf(const engine::TextRecord& text, const CodePage& codePage);

}  // namespace vemra::commands
