#include <algorithm>
#include <string>

#include "Support/text/Section.h"
#include "fuzz/FuzzInput.h"
#include "tests/text/PlainCut.h"

namespace vemra::fuzz {
namespace {

constexpr std::size_t kMaxText = 200;  // the plain cut is slow

// Has its own CharType, with the same classes: cut item by item.
class GeneralSection : public TavoSection {
 public:
  using TavoSection::TavoSection;
  WordType CharType(unsigned char c) override { return TavoSection::CharType(c); }
};

std::string TakeText(std::string_view& bytes) {
  const std::size_t size = std::min({bytes.find('\xFF'), bytes.size(), kMaxText});
  std::string text(bytes.substr(0, size));
  bytes.remove_prefix(std::min(size + 1, bytes.size()));
  return text;
}

int TakeNumber(std::string_view& bytes) {
  if (bytes.empty()) return 0;
  const auto number = static_cast<unsigned char>(bytes[0]);
  bytes.remove_prefix(1);
  return number;
}

void CheckFresh(TavoSection& section, bool breakOnNewLine) {
  const test::PlainCut plain(section.GetContents(), breakOnNewLine);
  Check(test::Same(section, plain), "a section is cut by the rules");
}

// The counts on entry go through the edits, so they are given to the fresh section too.
void CheckEdited(TavoSection& section) {
  Check(test::SameItems(section, test::PlainCut(section.GetContents())), "edited items");
  TavoSection fresh(nullptr, section.GetContents());
  fresh.SetWordInSentencePosition(section.GetWordInSentencePosition());
  fresh.SetWordInParagraphPosition(section.GetWordInParagraphPosition());
  fresh.SetSentenceInParagraphPosition(section.GetSentenceInParagraphPosition());
  fresh.ParseContents();
  Check(section.GetSentenceBreaks().GetEntries() == fresh.GetSentenceBreaks().GetEntries() &&
            section.GetParagraphBreaks().GetEntries() == fresh.GetParagraphBreaks().GetEntries(),
        "edited breaks");
  Check(section.GetWordInSentenceAtEnd() == fresh.GetWordInSentenceAtEnd() &&
            section.GetWordInParagraphAtEnd() == fresh.GetWordInParagraphAtEnd() &&
            section.GetSentenceInParagraphAtEnd() == fresh.GetSentenceInParagraphAtEnd(),
        "edited counts");
}

void CheckTexts(TavoSection& section, int limit) {
  int taken = 0;
  section.MakeWordFromContents(limit, limit, &taken);
  Check(taken <= section.GetWordsNumber(), "words taken");
  section.MakeExpression(&taken);
  section.MarkAllWords();
  section.MarkContents();
  section.GetTextContents(limit);
}

void Run(std::string_view bytes) {
  const std::string text = TakeText(bytes);
  for (const bool breakOnNewLine : {false, true}) {
    TavoSection plain(nullptr, text);
    GeneralSection general(nullptr, text);
    for (TavoSection* section : {&plain, static_cast<TavoSection*>(&general)}) {
      section->SetBreakOnNewLine(breakOnNewLine ? 1 : 0);
      section->ParseContents();
      CheckFresh(*section, breakOnNewLine);
    }
  }
  TavoSection section(nullptr, text);
  section.SetBreakOnNewLine(1);
  section.ParseContents();
  for (int step = 0; step < 8 && !bytes.empty(); ++step) {
    const int edit = TakeNumber(bytes);
    if (edit % 4 == 0) {
      section.CutStart(TakeNumber(bytes) % 16);
    } else if (edit % 4 == 1) {
      section.CutEnd(TakeNumber(bytes) % 16);
    } else {
      TavoSection other(nullptr, TakeText(bytes));
      other.SetBreakOnNewLine(1);
      section.AddSection(other, edit % 2);
    }
    CheckEdited(section);
  }
  CheckTexts(section, TakeNumber(bytes));
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
