#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

#include "Support/text/HighlightSearch.h"
#include "fuzz/FuzzInput.h"
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

// Whether every tag of a page is one that the style writes, and none comes from the document.
inline bool HasOnlyHitTags(std::string_view page) {
  constexpr std::string_view kTags[] = {"<mark id=\"hit", "</mark>",        "<a href=\"#hit",
                                        "</a>",           "<span id=\"hit", "</span>"};
  for (std::size_t at = page.find('<'); at != std::string_view::npos; at = page.find('<', at + 1)) {
    const auto begins = [&](std::string_view tag) { return page.substr(at).starts_with(tag); };
    if (std::none_of(std::begin(kTags), std::end(kTags), begins)) return false;
  }
  return true;
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
  Check(HasOnlyHitTags(page), "nothing of the document is live");
}

}  // namespace vemra::fuzz
