#include "programs/commands/Excerpt.h"

#include <algorithm>

#include "Support/definition/FileINI.h"
#include "Support/foundation/Strings.h"
#include "Support/text/HighlightWrapper.h"
#include "Support/text/ParseFile.h"
#include "programs/engine/HitSearch.h"
#include "programs/formats/MarkedSection.h"

namespace vemra::commands {
namespace {

// Control characters cannot come from a document: its parser makes blanks of them.
constexpr char kOpening = 1;
constexpr char kClosing = 2;

class PieceStyle : public HitStyle {
 public:
  void AppendOpening(int, std::string& out) const override { out += kOpening; }
  void AppendClosing(int, std::string& out) const override { out += kClosing; }
  void AppendText(std::string_view text, std::string& out) const override { out += text; }
  void AppendEnd(int, std::string&) const override {}
};

// The title is shown anyway, so its hits count only where there are no others.
void PreferHitsOutsideTitle(std::vector<engine::Hit>& hits, const CTavoFileINI& fields) {
  const auto isInTitle = [&](const engine::Hit& hit) {
    return fields.GetTitlePos(hit.fieldno) >= 0;
  };
  if (!std::all_of(hits.begin(), hits.end(), isInTitle)) std::erase_if(hits, isInTitle);
}

std::string OnOneLine(const std::string& text) {
  std::string line;
  SmartStrncopy(line, text, static_cast<int>(text.size()));
  const std::size_t begin = line.find_first_not_of(' ');
  if (begin == std::string::npos) return {};
  return line.substr(begin, line.find_last_not_of(' ') - begin + 1);
}

std::vector<SummaryPiece> CutPieces(const std::string& text) {
  std::vector<SummaryPiece> pieces;
  SummaryPiece piece;
  for (const char c : text + kClosing) {
    if (c != kOpening && c != kClosing) {
      piece.text += c;
      continue;
    }
    if (!piece.text.empty()) pieces.push_back(std::move(piece));
    piece = {std::string(), c == kOpening};
  }
  return pieces;
}

TavoHighlightWrapper::Mode ModeOf(SummaryKind kind) {
  return kind == SummaryKind::kStart ? TavoHighlightWrapper::kFirstWords
                                     : TavoHighlightWrapper::kAroundFirstHit;
}

}  // namespace

std::vector<SummaryPiece> MakeSummary(FormatWrapper& wrapper, const engine::TextRecord& text,
                                      std::vector<engine::Hit> hits, SummaryKind kind) {
  PreferHitsOutsideTitle(hits, wrapper.GetFileINI());
  engine::HitSearch search(std::move(hits));
  TavoHighlightWrapper highlight(ModeOf(kind), &search, kSummaryWords, wrapper.GetLangPack());
  TavoParseFile* parser = wrapper.GetHighlightParser(&highlight);
  if (parser == nullptr) return {};
  search.SetParser(parser);
  const bool parsed = parser->ParseFile(text.path) != 0;
  wrapper.FreeHighlightParser(parser);
  if (!parsed) return {};
  if (kind == SummaryKind::kStart) highlight.TruncateSection();  // else done at the end of parsing
  const PieceStyle style;
  MarkedSection summary(*highlight.GetSummary(), style);
  summary.MarkContents();
  return CutPieces(wrapper.GetCodePage().ToUtf8(OnOneLine(summary.GetMarkedContents())));
}

std::string TitleOf(const engine::TextRecord& text, const CodePage& codePage) {
  if (!text.title.empty()) return codePage.ToUtf8(text.title);
  return text.path.substr(text.path.rfind('\\') + 1);
}

}  // namespace vemra::commands
