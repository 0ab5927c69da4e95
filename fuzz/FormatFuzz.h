#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "Support/text/HighlightSearch.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/SafePage.h"
#include "programs/formats/FormatParser.h"
#include "programs/formats/HitStyle.h"
#include "programs/formats/Purposes.h"
#include "tests/programs/formats/Recording.h"

// What is true of every document format, whatever the bytes of a document.
namespace vemra::fuzz {

class MarkEverything : public TavoHighlightSearch {
 public:
  void MarkWords(TavoSection& section, const CTavoFieldList& /*fields*/) override {
    section.MarkAllWords();
  }
  void Finish() override {}
};

inline bool IsCleanText(const std::string& text) {
  const auto isClean = [](unsigned char c) {
    return (c >= ' ' && c != 127) || c == '\t' || c == '\n' || c == '\f' || c == '\r';
  };
  return !text.empty() && text.size() <= FormatParser::kMaxRun &&
         std::all_of(text.begin(), text.end(), isClean);
}

template <typename Format>
void RunFormat(std::string_view bytes) {
  test::PageWrapper wrapper;
  test::Recorder<Format> recorder(wrapper);
  Check(recorder.ParseDocument(std::string(bytes)) == 1, "any bytes are a document");
  Check(std::all_of(recorder.texts.begin(), recorder.texts.end(), IsCleanText), "clean runs");

  MarkEverything search;
  TavoHighlightWrapper highlight(TavoHighlightWrapper::kWholeDocument, &search, 0,
                                 wrapper.GetLangPack());
  const HtmlStyle style;
  HighlightParser<Format> parser(&wrapper, CodePage::Windows1252(), &highlight, style);
  Check(parser.ParseDocument(std::string(bytes)) == 1, "highlighting reads it too");
  parser.GetOutput()->TryPrintAll();
  std::string page = parser.GetOutput()->GetOutputBuffer();
  style.AppendEnd(parser.GetOutput()->GetHighlightCount(), page);
  SafePage(page).Check();
}

}  // namespace vemra::fuzz
